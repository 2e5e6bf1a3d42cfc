// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "common/Output.h"
#include "common/Result.h"
#include "scenario/Parser.h"
#include "scenario/StatementRunner.h"
#include "scenario/Tap.h"

namespace applist::sim {

/// A scenario and where it came from.
struct Scenario {
    std::string file;  ///< As it was named; "-" is standard input.
    std::vector<Statement> statements;
};

/// Reads and parses a file. A failure has one line for each error, "FILE:LINE:COLUMN: message".
Result<Scenario> LoadScenario(const std::string& file);

struct ScenarioOptions {
    std::string address;     ///< Of the bus; empty for the system bus.
    bool keepGoing = false;  ///< Goes on behind what failed.
};

/// Plays scenarios one after the other, each with middlewares of its own, and prints the results.
/// SIGINT and SIGTERM end it early.
class ScenarioRun {
public:
    ScenarioRun(ScenarioOptions options, std::vector<Scenario> scenarios);

    /// Runs to the end on the default main context. Once only.
    ExitCode Run();

private:
    void WatchSignals();
    void Play(const Scenario& scenario);
    void PlayStatement(const Scenario& scenario, size_t index);
    void Take(const Outcome& outcome, const std::string& description, const std::string& where);
    void Write(const std::string& line);
    void End(ExitCode code);
    static int cb_Interrupted(void* run) noexcept;

    ScenarioOptions m_options;
    std::vector<Scenario> m_scenarios;
    Tap m_tap;
    std::unique_ptr<StatementRunner> m_runner;
    std::vector<Registration> m_signals;
    std::vector<std::string> m_seen;
    std::string m_failedAt;  ///< In this scenario; empty if all has held.
    bool m_allHeld = true;
    std::optional<ExitCode> m_end;  ///< Nothing more is done.
};

}  // namespace applist::sim
