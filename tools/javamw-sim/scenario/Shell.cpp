// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Shell.h"

#include <csignal>
#include <deque>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "middleware/MainLoop.h"
#include "middleware/Report.h"
#include "scenario/LineInput.h"
#include "scenario/StatementRunner.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

bool IsPerson() {
    // The line editor needs a terminal on both sides.
    return isatty(STDIN_FILENO) != 0 && isatty(STDOUT_FILENO) != 0;
}

std::string Trimmed(const std::string& text) {
    const size_t begin = text.find_first_not_of(" \t\r");
    const size_t end = text.find_last_not_of(" \t\r");
    return begin == std::string::npos ? std::string() : text.substr(begin, end - begin + 1);
}

bool HasError(const std::optional<Result<Bytes>>& reply) {
    return reply && !*reply;
}

class Shell {
public:
    Shell(SessionOptions options, bool offline)
        : m_options(std::move(options)),
          m_offline(offline),
          m_person(IsPerson()),
          m_report(m_options.json, !m_options.json && tools::OutputTakesColours()),
          m_runner(m_options.address, [this](Middleware& middleware, const Happening& happening) {
              OnHappening(middleware, happening);
          }) {}

    /// Runs the default main context to the end. Call only once.
    ExitCode Run() {
        OpenInput();
        WatchSignals();
        if (!m_offline) {
            const Outcome joined = m_runner.Execute({.run = &StatementRunner::Join});
            // Fail() does not end the shell of a person, so End() follows.
            if (joined.verdict == Verdict::NoBus) {
                Fail("join", joined.problem, ExitCode::NoBus);
                End(ExitCode::NoBus);
            }
        }
        while (const auto line = NextLine()) {
            Do(*line);
        }
        if (!m_loop.exitCode()) {
            // The input can end while an error is pending or while the viewer's choice is still
            // being read.
            SettlePending(nullptr);
            m_runner.FinishChoices();
        }
        return m_loop.exitCode().value_or(ExitCode::Success);
    }

private:
    /// A failed call. It is not a failure if the next line expects an error.
    struct PendingFailure {
        Statement statement;
        std::string problem;
    };

    void OpenInput() {
        const LineInput::Listener listener{
            .line = [this](const std::string& line) { m_lines.push_back(line); },
            .end = [this] { m_inputEnded = true; }};
        m_input = m_person ? MakeEditorInput(
                                 listener,
                                 [this](std::string_view text) { return Completions(text, m_ids); })
                           : MakeStreamInput(STDIN_FILENO, listener);
    }

    void WatchSignals() {
        m_loop.OnSignal(SIGINT, [this] { OnInterrupted(); });
        for (const int number : {SIGTERM, SIGHUP}) {
            m_loop.OnSignal(number, [this] {
                m_runner.Interrupt();
                End(ExitCode::Success);
            });
        }
    }

    /// Waits for the next line; returns nothing at the end.
    std::optional<std::string> NextLine() {
        if (m_lines.empty() && !m_inputEnded && !m_loop.exitCode()) {
            m_input->Resume(m_runner.acting().middleware.name() + "> ");
            RunUntil([this] {
                return !m_lines.empty() || m_inputEnded || m_loop.exitCode().has_value();
            });
            m_input->Pause();
        }
        if (m_lines.empty() || m_loop.exitCode()) {
            return std::nullopt;
        }
        std::string line = std::move(m_lines.front());
        m_lines.pop_front();
        return line;
    }

    void Do(const std::string& line) {
        ++m_lineNumber;
        if (DoCommand(Trimmed(line))) {
            return;
        }
        const ParsedLine parsed = ParseStatement(line, m_lineNumber);
        if (parsed.error) {
            Fail(Trimmed(line),
                 "column " + std::to_string(parsed.error->column) + ": " + parsed.error->message,
                 ExitCode::WrongUsage);
        } else if (parsed.statement) {
            SettlePending(&parsed.statement->action);
            DoStatement(*parsed.statement);
        }
    }

    /// True if line is a command of the shell itself.
    bool DoCommand(const std::string& line) {
        const size_t blank = line.find_first_of(" \t");
        const std::string word = line.substr(0, blank);
        const std::string rest = blank == std::string::npos ? "" : Trimmed(line.substr(blank));
        if (word == "help") {
            PrintHelp(rest);
        } else if (word == "busctl") {
            PrintBusctl(rest);
        } else if (word == "quit" && rest.empty()) {
            SettlePending(nullptr);
            m_runner.FinishChoices();
            End(ExitCode::Success);
        } else {
            return false;
        }
        return true;
    }

    void DoStatement(const Statement& statement) {
        if (m_loop.exitCode()) {
            return;
        }
        if (!statement.action.IsSetting()) {
            m_last = statement.action;
        }
        m_executing = true;
        const Outcome outcome = m_runner.Execute(statement.action);
        m_executing = false;
        Learn(statement.action, outcome);
        Judge(statement, outcome);
    }

    void Judge(const Statement& statement, const Outcome& outcome) {
        const bool answered = outcome.reply && !outcome.reply->empty();
        switch (outcome.verdict) {
            case Verdict::Held:
                if (answered) {
                    for (const Item& item : *outcome.reply) {
                        Show(m_report.ItemOfReply(item));
                    }
                } else if (m_person && !statement.action.IsSetting()) {
                    Show(m_report.Held(statement.text));
                }
                break;
            case Verdict::Failed:
                // In a file the next line may expect this error, so the failure is kept until that
                // line is read.
                if (!m_person && statement.action.kind == Action::Kind::Sending &&
                    HasError(m_runner.acting().lastReply)) {
                    m_pending = {statement, outcome.problem};
                } else {
                    Fail(statement.text, outcome.problem, ExitCode::CallFailed);
                }
                break;
            case Verdict::Interrupted:
                Fail(statement.text, outcome.problem, ExitCode::CallFailed);
                break;
            case Verdict::NoBus:
                Fail(statement.text, outcome.problem, ExitCode::NoBus);
                End(ExitCode::NoBus);
                break;
        }
    }

    void SettlePending(const Action* next) {
        const auto pending = std::exchange(m_pending, std::nullopt);
        const bool expected = next != nullptr && next->kind == Action::Kind::ErrorExpected;
        if (pending && !expected) {
            Fail(pending->statement.text, pending->problem, ExitCode::CallFailed,
                 pending->statement.line);
        }
    }

    void Learn(const Action& action, const Outcome& outcome) {
        // The ids that were sent or received complete the words of later lines.
        Items seen = outcome.reply.value_or(Items());
        if (action.message && action.message->call) {
            const Items& sent = action.message->call->items;
            seen.insert(seen.end(), sent.begin(), sent.end());
        }
        for (const Item& item : seen) {
            m_ids.insert(item.id);
        }
    }

    void PrintHelp(const std::string& about) {
        std::vector<std::string> lines;
        for (const StatementForm& command : ShellCommands()) {
            if (about.empty() || command.keyword == about) {
                lines.push_back(command.keyword + ' ' + command.words + "\n    " + command.meaning);
            }
        }
        for (const StatementForm& form : StatementForms()) {
            if (about.empty() || form.keyword.starts_with(about)) {
                lines.push_back(form.keyword + ' ' + form.words + "\n    " + form.meaning);
            }
        }
        if (lines.empty()) {
            Fail("help " + about, "unknown statement or command '" + about + "'",
                 ExitCode::WrongUsage);
        }
        for (const std::string& line : lines) {
            Show(m_report.Answer(line));
        }
    }

    void PrintBusctl(const std::string& text) {
        std::optional<Action> action = m_last;
        if (!text.empty()) {
            const ParsedLine parsed = ParseStatement(text);
            if (!parsed.statement) {
                Fail("busctl " + text, parsed.error ? parsed.error->message : "no statement",
                     ExitCode::WrongUsage);
                return;
            }
            action = parsed.statement->action;
        }
        if (!action) {
            Fail("busctl", "no statement has run yet", ExitCode::WrongUsage);
            return;
        }
        const auto lines =
            BusctlLines(*action, {m_options.address, m_runner.acting().middleware.application()});
        if (!lines) {
            Fail("busctl " + text, lines.error(), ExitCode::CallFailed);
            return;
        }
        for (const std::string& line : *lines) {
            Show(m_report.Answer(line));
        }
    }

    void Show(const std::string& line) {
        // The reader of the output may have closed the pipe.
        if (!m_input->Print(line)) {
            End(ExitCode::CallFailed);
        }
    }

    // A person sees the error at once. The author of a file needs the line number.
    void Fail(const std::string& statement, const std::string& problem, ExitCode code,
              std::optional<size_t> failed = std::nullopt) {
        const size_t line = failed.value_or(m_lineNumber);
        if (m_person || m_options.json) {
            Show(m_report.Problem(statement, problem));
        }
        if (!m_person) {
            const std::string where = line > 0 ? "line " + std::to_string(line) + ": " : "";
            Complain(where + tools::OneLine(problem));
            End(code);
        }
    }

    void OnHappening(Middleware& middleware, const Happening& happening) {
        if (!ReadSelection(middleware, happening)) {
            Show(m_report.Happened(middleware.name(), happening));
        }
        if (!middleware.busProblem().empty()) {
            End(ExitCode::NoBus);
        }
    }

    /// Reads the selection if the event needs it. Returns true if the event is shown with it.
    // The selection is read after event 2 as well, because it is the choice if the application does
    // not answer after event 3.
    bool ReadSelection(Middleware& middleware, const Happening& happening) {
        const auto event = DecodeNotification(happening.message);
        const bool choice = event && event->event == Event::ItemClicked;
        if (happening.kind != Happening::Kind::Notified || !event ||
            (!choice && event->event != Event::ItemSelected)) {
            return false;
        }
        middleware.selections().Read(
            happening.application, event->event,
            [this, name = middleware.name(), application = happening.application, event,
             choice](const SelectedItem& selection) {
                if (choice) {
                    Show(m_report.Choice(name, application, *event, selection));
                }
            });
        return choice;
    }

    // Ends the running statement first, then the typed line, then the shell.
    void OnInterrupted() {
        if (m_executing) {
            m_runner.Interrupt();
        } else if (!m_input->Discard()) {
            End(ExitCode::Success);
        }
    }

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

}  // namespace

ExitCode RunShell(const SessionOptions& options, bool offline) {
    return Shell(options, offline).Run();
}

}  // namespace applist::sim
