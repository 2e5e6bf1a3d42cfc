// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "middleware/MainLoop.h"
#include "middleware/Report.h"
#include "middleware/Session.h"
#include "scenario/LineInput.h"
#include "scenario/StatementRunner.h"

namespace applist::sim {

/// Runs statements line by line and prints the events that arrive. After a failed statement, it
/// continues on a terminal and ends otherwise.
class Shell {
public:
    /// An offline shell joins the bus only when a statement needs it.
    Shell(SessionOptions options, bool offline);
    ~Shell();
    Shell(const Shell&) = delete;
    Shell& operator=(const Shell&) = delete;

    /// Runs the default main context to the end. Call only once.
    ExitCode Run();

private:
    /// A failed call. It is not a failure if the next line expects an error.
    struct PendingFailure {
        Statement statement;
        std::string problem;
    };

    void OpenInput();
    void WatchSignals();
    /// Waits for the next line; returns nothing at the end.
    std::optional<std::string> NextLine();
    void Do(const std::string& line);
    /// True if line is a command of the shell itself.
    bool DoCommand(const std::string& line);
    void DoStatement(const Statement& statement);
    void Judge(const Statement& statement, const Outcome& outcome);
    void SettlePending(const Action* next);
    void Learn(const Action& action, const Outcome& outcome);
    void PrintHelp(const std::string& about);
    void PrintBusctl(const std::string& text);

    void Show(const std::string& line);
    void Fail(const std::string& statement, const std::string& problem, ExitCode code) {
        Fail(statement, problem, code, m_lineNumber);
    }
    void Fail(const std::string& statement, const std::string& problem, ExitCode code, size_t line);
    void OnHappening(Middleware& middleware, const Happening& happening);
    /// Reads the selection if the event needs it. Returns true if the event is shown with it.
    bool ReadSelection(Middleware& middleware, const Happening& happening);
    void OnInterrupted();
    void End(ExitCode code) { m_loop.End(code); }

    SessionOptions m_options;
    bool m_offline;
    bool m_person;  ///< True for a terminal, false for a pipe.
    Report m_report;
    MainLoop m_loop;
    StatementRunner m_runner;
    std::unique_ptr<LineInput> m_input;
    std::deque<std::string> m_lines;
    size_t m_lineNumber = 0;
    bool m_inputEnded = false;
    bool m_executing = false;
    std::optional<Action> m_last;  ///< The last statement that used the bus.
    std::optional<PendingFailure> m_pending;
    std::set<std::string> m_ids;  ///< Ids of all items seen.
};

}  // namespace applist::sim
