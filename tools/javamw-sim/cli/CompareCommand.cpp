// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <utility>

#include "cli/CommonOptions.h"
#include "cli/Subcommand.h"
#include "common/Output.h"
#include "recording/Comparison.h"
#include "recording/RecordingFile.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Prints each message that only FIRST has with \"-\", and each that only SECOND has with\n"
    "\"+\", with file and line (of a capture: the packet). A call is placed at its reply.\n"
    "Times and unique bus names are not compared, because they differ from run to run;\n"
    "connections are matched by their order of appearance.\n"
    "\n"
    "Both may be recordings of this program or captures of \"busctl capture\".\n"
    "\n"
    "Exit status 0: the same, 1: different, 2: a file cannot be read.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim compare monday.jsonl tuesday.jsonl\n"
    "  busctl capture > real.pcapng; javamw-sim compare real.pcapng session.jsonl\n";

constexpr int64_t MICROSECONDS = 1000;

/// The options of the command.
struct Comparison {
    std::string first;
    std::string second;
    CompareOptions options;
    bool json = false;
};

std::optional<Recording> Load(const std::string& file) {
    auto recording = LoadRecording(file);
    if (!recording) {
        Complain(recording.error());
        return std::nullopt;
    }
    if (!recording->remark.empty()) {
        Complain(recording->remark);
    }
    return std::move(*recording);
}

ExitCode Run(const Comparison& asked) {
    const auto first = Load(asked.first);
    const auto second = Load(asked.second);
    if (!first || !second) {
        return ExitCode::WrongUsage;
    }
    const auto steps = StepsOf(*first, asked.options.names);
    const auto differences =
        Compare(steps, StepsOf(*second, asked.options.names), asked.options.tolerance);
    const bool written =
        PrintReport({.differences = differences,
                     .firstFile = asked.first,
                     .secondFile = asked.second,
                     .same = "no difference in " + std::to_string(steps.size()) + " steps",
                     .json = asked.json});
    return differences.empty() && written ? ExitCode::Success : ExitCode::CallFailed;
}

Result<Job> Prepare(const Arguments& given) {
    if (given.words().size() != 2) {
        return Result<Job>::Failure("compare takes FIRST and SECOND");
    }
    Comparison asked{given.words()[0], given.words()[1], {}, given.Has("json")};
    asked.options.names = given.Has("names");
    if (given.Has("tolerance")) {
        const auto milliseconds =
            WholeNumber("tolerance", "whole milliseconds", given.Value("tolerance"));
        if (!milliseconds) {
            return Result<Job>::Failure(milliseconds.error());
        }
        asked.options.tolerance = *milliseconds * MICROSECONDS;
    }
    return Job([asked] { return Run(asked); });
}

}  // namespace

Subcommand CompareSubcommand() {
    return {"compare",
            "FIRST SECOND",
            "Print the differences between two recordings",
            {{"names", '\0', "", "Compare unique bus names, too"},
             {"tolerance", '\0', "MS", "Compare times, too, with this tolerance"},
             JsonOption()},
            DETAILS,
            &Prepare};
}

}  // namespace applist::sim
