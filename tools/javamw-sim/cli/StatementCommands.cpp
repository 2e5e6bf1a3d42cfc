// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <utility>
#include <vector>

#include "cli/Commands.h"
#include "scenario/ScenarioRun.h"
#include "scenario/Shell.h"

namespace applist::sim {
namespace {

constexpr const char* RUN_DETAILS =
    "Each FILE is a scenario, one statement a line; \"-\" is standard input. The results\n"
    "are printed in the Test Anything Protocol, one point for each statement that does or\n"
    "expects something. After a failure the rest of the file is skipped. Nothing is run\n"
    "if any file has an error.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim run normal-session.scenario\n"
    "  javamw-sim run --check *.scenario\n"
    "  echo 'wait connected' | javamw-sim run -\n"
    "\n"
    "Statements:\n";

std::string RunDetails() {
    std::string text = RUN_DETAILS;
    for (const StatementForm& form : StatementForms()) {
        text += "  " + form.keyword + (form.words.empty() ? "" : " " + form.words) + "\n";
    }
    return text + "applist-scenario(5) explains them.\n";
}

/// Loads all files, or none if one has an error. Reports the errors of all files.
std::optional<std::vector<Scenario>> Load(const std::vector<std::string>& files) {
    std::vector<Scenario> scenarios;
    bool complete = true;
    for (const std::string& file : files) {
        auto scenario = LoadScenario(file);
        if (scenario) {
            scenarios.push_back(std::move(*scenario));
        } else {
            complete = false;
            Complain(scenario.error());
        }
    }
    return complete ? std::optional(std::move(scenarios)) : std::nullopt;
}

int RunRunCommand(const Arguments& given) {
    if (const std::string twice = InputTakenTwice(given.words()); !twice.empty()) {
        return given.Refuse(twice);
    }
    auto scenarios = Load(given.words());
    if (!scenarios || given.Has("check")) {
        return static_cast<int>(scenarios ? ExitCode::Success : ExitCode::WrongUsage);
    }
    return static_cast<int>(
        RunScenarios(given.Value("address"), given.Has("keep-going"), std::move(*scenarios)));
}

constexpr const char* SHELL_DETAILS =
    "Each line is a statement of the scenario language and runs at once. Events are\n"
    "printed above the line being typed. Further commands:\n"
    "  help [STATEMENT]         list the statements\n"
    "  busctl [STATEMENT]       print busctl lines that do the same as STATEMENT, or as\n"
    "                           the last statement\n"
    "  quit                     end; Ctrl-D does the same\n"
    "Tab completes keywords and the ids of known items; the arrow keys and\n"
    "Ctrl-R find earlier lines, which are kept in $XDG_STATE_HOME/javamw-sim/history.\n"
    "Ctrl-C ends the running statement, drops the line being typed, or ends the shell.\n"
    "\n"
    "Input from a pipe ends at the first line that fails; the error names the line.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim shell\n"
    "  printf 'wait connected\\nadd w1=Weather\\ncall GetAllItems\\n' | javamw-sim shell\n";

int RunShellCommand(const Arguments& given) {
    return static_cast<int>(RunShell({.address = given.Value("address"), .json = given.Has("json")},
                                     given.Has("offline")));
}

}  // namespace

std::vector<Command> StatementCommands() {
    return {{"run",
             "FILE...",
             "Play scenarios and print whether their expectations hold",
             {AddressOption(),
              {"check", 'c', "", "Only check the files for errors"},
              {"keep-going", 'k', "", "Continue after a failure"}},
             RunDetails(),
             &RunRunCommand},
            {"shell",
             "",
             "Run statements interactively",
             {AddressOption(),
              {"offline", '\0', "", "Join the bus only when a statement needs it"},
              JsonOption()},
             SHELL_DETAILS,
             &RunShellCommand}};
}

}  // namespace applist::sim
