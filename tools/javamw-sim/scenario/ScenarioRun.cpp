// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/ScenarioRun.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "File.h"
#include "scenario/StatementRunner.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

// Escapes "#", which begins a directive.
std::string Description(const std::string& text) {
    return tools::Replaced(tools::OneLine(text), "#", "\\#");
}

// OneLine() has already escaped the backslashes, so only the quotation mark is left for YAML.
std::string Quoted(const std::string& text) {
    return '"' + tools::Replaced(tools::OneLine(text), "\"", "\\\"") + '"';
}

}  // namespace

void Tap::Plan(size_t points) {
    m_write("TAP version 13");
    m_write("1.." + std::to_string(points));
}

void Tap::Pass(const std::string& description) {
    m_write(Point("ok", tools::colour::GOOD, description));
}

void Tap::Skip(const std::string& description, const std::string& reason) {
    // TAP marks a skipped point as "ok" with a SKIP directive, so that it does not count as failed.
    m_write(Point("ok", tools::colour::QUIET, description) + " # SKIP " + tools::OneLine(reason));
}

void Tap::Fail(const std::string& description, const std::string& where, const std::string& problem,
               const std::vector<std::string>& seen) {
    m_write(Point("not ok", tools::colour::BAD, description));
    // TAP 13 puts the details of a point into an indented YAML block between "---" and "...".
    m_write("  ---");
    m_write("  at: " + Quoted(where));
    m_write("  problem: " + Quoted(problem));
    if (!seen.empty()) {
        m_write("  seen:");
    }
    for (const std::string& happening : seen) {
        m_write("    - " + Quoted(happening));
    }
    m_write("  ...");
}

void Tap::Comment(const std::string& text) {
    m_write("# " + tools::OneLine(text));
}

void Tap::BailOut(const std::string& reason) {
    m_write("Bail out! " + tools::OneLine(reason));
}

std::string Tap::Point(const char* result, const char* colour, const std::string& description) {
    return (m_colours ? tools::Painted(result, colour) : result) + ' ' +
           std::to_string(++m_number) + " - " + Description(description);
}

Result<Scenario> LoadScenario(const std::string& file) {
    const auto text = ReadFile(file);
    if (!text) {
        return Result<Scenario>::Failure(text.error());
    }
    ParsedScenario parsed = ParseScenario(*text);
    const std::string errors = tools::Joined(parsed.errors, "\n", [&](const ScenarioError& error) {
        return file + ':' + std::to_string(error.line) + ':' + std::to_string(error.column) + ": " +
               error.message;
    });
    return errors.empty() ? Result(Scenario{file, std::move(parsed.statements)})
                          : Result<Scenario>::Failure(errors);
}

namespace {

// A long wait may produce many events; the last ones are the most useful.
constexpr size_t MOST_SEEN = 20;

size_t PointsOf(const Scenario& scenario) {
    return static_cast<size_t>(std::ranges::count_if(
        scenario.statements,
        [](const Statement& statement) { return !statement.action.IsSetting(); }));
}

class ScenarioRun {
public:
    ScenarioRun(std::string address, bool keepGoing, std::vector<Scenario> scenarios)
        : m_address(std::move(address)),
          m_keepGoing(keepGoing),
          m_scenarios(std::move(scenarios)),
          m_tap([this](const std::string& line) { m_loop.Print(line); },
                tools::OutputTakesColours()) {
        m_loop.OnInterrupt([this] { m_runner->Interrupt(); });
    }

    /// Runs the scenarios on the default main context until all have ended. Returns the exit code
    /// of the program. Call only once.
    ExitCode Run() {
        // TAP needs the number of points before the first one, so all scenarios are counted first.
        size_t points = 0;
        for (const Scenario& scenario : m_scenarios) {
            points += PointsOf(scenario);
        }
        m_tap.Plan(points);
        for (const Scenario& scenario : m_scenarios) {
            if (!m_loop.exitCode()) {
                Play(scenario);
            }
        }
        return m_loop.exitCode().value_or(m_allHeld ? ExitCode::Success : ExitCode::CallFailed);
    }

private:
    void Play(const Scenario& scenario) {
        m_failedAt.clear();
        m_seen.clear();
        // Each scenario gets a new runner, so that no connection or event of the previous one is
        // left.
        m_runner = std::make_unique<StatementRunner>(
            m_address, [this](const Middleware& middleware, const Happening& happening) {
                m_seen.push_back(middleware.name() + ": " + Describe(happening));
            });
        for (size_t i = 0; i < scenario.statements.size() && !m_loop.exitCode(); ++i) {
            PlayStatement(scenario, i);
        }
    }

    void PlayStatement(const Scenario& scenario, size_t index) {
        const Statement& statement = scenario.statements[index];
        const std::string where = scenario.file + ':' + std::to_string(statement.line);
        const bool setting = statement.action.IsSetting();
        if (!m_failedAt.empty() && !m_keepGoing) {
            // A skipped statement still gets its point, because the plan has counted it.
            if (!setting) {
                m_tap.Skip(where + ' ' + statement.text, m_failedAt + " failed");
            }
            return;
        }
        if (statement.action.comment) {
            m_tap.Comment(*statement.action.comment);
        }
        // An error reply is not a failure of the call if the next statement expects that error.
        const bool errorExpected =
            index + 1 < scenario.statements.size() &&
            scenario.statements[index + 1].action.kind == Action::Kind::ErrorExpected;
        const Outcome outcome = m_runner->Execute(statement.action, errorExpected);
        if (!setting || outcome.verdict != Verdict::Held) {
            Take(outcome, where + ' ' + statement.text, where);
        }
    }

    void Take(const Outcome& outcome, const std::string& description, const std::string& where) {
        if (m_seen.size() > MOST_SEEN) {
            m_seen.erase(m_seen.begin(), m_seen.end() - MOST_SEEN);
        }
        const std::vector<std::string> seen = std::exchange(m_seen, {});
        switch (outcome.verdict) {
            case Verdict::Held:
                m_tap.Pass(description);
                return;
            case Verdict::Failed:
                m_tap.Fail(description, where, outcome.problem, seen);
                break;
            case Verdict::Interrupted:
                m_tap.BailOut("interrupted at " + description);
                m_loop.End(ExitCode::CallFailed);
                break;
            case Verdict::NoBus:
                // Without a bus no later statement can hold, so the run ends here.
                m_tap.Fail(description, where, outcome.problem, seen);
                m_tap.BailOut(outcome.problem);
                m_loop.End(Fail(outcome.problem, ExitCode::NoBus));
                break;
        }
        m_allHeld = false;
        m_failedAt = where;
    }

    std::string m_address;
    bool m_keepGoing;
    std::vector<Scenario> m_scenarios;
    MainLoop m_loop;
    Tap m_tap;
    std::unique_ptr<StatementRunner> m_runner;
    std::vector<std::string> m_seen;
    std::string m_failedAt;  ///< Position of the failure in this scenario; empty if none.
    bool m_allHeld = true;
};

}  // namespace

ExitCode RunScenarios(const std::string& address, bool keepGoing, std::vector<Scenario> scenarios) {
    return ScenarioRun(address, keepGoing, std::move(scenarios)).Run();
}

}  // namespace applist::sim
