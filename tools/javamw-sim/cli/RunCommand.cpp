// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <sstream>
#include <utility>

#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "common/Output.h"
#include "scenario/ScenarioRun.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
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

std::string Details() {
    std::string text = DETAILS;
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
            std::istringstream errors(scenario.error());
            for (std::string error; std::getline(errors, error);) {
                Complain(error);
            }
        }
    }
    return complete ? std::optional(std::move(scenarios)) : std::nullopt;
}

int Run(const Arguments& given) {
    auto scenarios = Load(given.words());
    const ScenarioOptions options{given.Value("address"), given.Has("keep-going")};
    const ExitCode status = !scenarios ? ExitCode::WrongUsage
                            : given.Has("check")
                                ? ExitCode::Success
                                : ScenarioRun(options, std::move(*scenarios)).Run();
    return static_cast<int>(status);
}

}  // namespace

Command RunCommand() {
    return {"run",
            "FILE...",
            "Play scenarios and print whether their expectations hold",
            {AddressOption(),
             {"check", 'c', "", "Only check the files for errors"},
             {"keep-going", 'k', "", "Continue after a failure"}},
            Details(),
            &Run};
}

}  // namespace applist::sim
