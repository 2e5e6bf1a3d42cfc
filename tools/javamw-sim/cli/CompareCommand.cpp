// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <optional>
#include <utility>

#include "cli/CommonOptions.h"
#include "cli/Program.h"
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

// Per millisecond. The option is in milliseconds, recorded times are in microseconds.
constexpr int64_t MICROSECONDS = 1000;

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

ExitCode Print(const std::string& firstFile, const std::string& secondFile,
               const CompareOptions& options, bool json) {
    // Both files are loaded before the check, so that the errors of both are reported.
    const auto first = Load(firstFile);
    const auto second = Load(secondFile);
    if (!first || !second) {
        return ExitCode::WrongUsage;
    }
    const auto steps = StepsOf(*first, options.names);
    const auto differences = Compare(steps, StepsOf(*second, options.names), options.tolerance);
    const bool written =
        PrintReport({.differences = differences,
                     .firstFile = firstFile,
                     .secondFile = secondFile,
                     .same = "no difference in " + std::to_string(steps.size()) + " steps",
                     .json = json});
    return differences.empty() && written ? ExitCode::Success : ExitCode::CallFailed;
}

int Run(const Arguments& given) {
    CompareOptions options{.names = given.Has("names"), .tolerance = std::nullopt};
    if (given.Has("tolerance")) {
        const auto milliseconds =
            WholeNumber("tolerance", "whole milliseconds", given.Value("tolerance"));
        if (!milliseconds) {
            return given.Refuse(milliseconds.error());
        }
        options.tolerance = *milliseconds * MICROSECONDS;
    }
    return static_cast<int>(Print(given.words()[0], given.words()[1], options, given.Has("json")));
}

}  // namespace

Command CompareCommand() {
    return {"compare",
            "FIRST SECOND",
            "Print the differences between two recordings",
            {{"names", '\0', "", "Compare unique bus names, too"},
             {"tolerance", '\0', "MS", "Compare times, too, with this tolerance"},
             JsonOption()},
            DETAILS,
            &Run};
}

}  // namespace applist::sim
