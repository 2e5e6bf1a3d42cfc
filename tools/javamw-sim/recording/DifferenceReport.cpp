// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/DifferenceReport.h"

#include "JsonWriter.h"
#include "Output.h"

namespace applist::sim {
namespace {

std::string StepLine(char sign, const std::string& file, const Step& step) {
    const std::string line = step.line > 0 ? ':' + std::to_string(step.line) : std::string();
    return std::string(1, sign) + ' ' + file + line + ": " + step.text;
}

std::string After(const Step& step) {
    return ", after " + std::to_string(step.time / 1000) + " ms";
}

std::string StepObject(int64_t number, const char* side, const std::string& file,
                       const Step& step) {
    return JsonWriter()
        .Object()
        .Text("type", "difference")
        .Number("number", number)
        .Text("side", side)
        .Text("file", file)
        .Number("line", static_cast<int64_t>(step.line))
        .Number("us", step.time)
        .Text("text", step.text)
        .EndObject()
        .Finish();
}

// One object for each side that has something to show.
bool PrintObjects(const DifferenceReport& report) {
    int64_t number = 0;
    bool written = true;
    for (const Difference& difference : report.differences) {
        ++number;
        if (difference.first) {
            written = written &&
                      WriteLine(StepObject(number, "first", report.firstFile, *difference.first));
        }
        if (difference.second) {
            written = written && WriteLine(StepObject(number, "second", report.secondFile,
                                                      *difference.second));
        }
    }
    return written;
}

}  // namespace

std::string DifferenceLines(const Difference& difference, const std::string& firstFile,
                            const std::string& secondFile) {
    if (!difference.second) {
        return StepLine('-', firstFile, *difference.first);
    }
    if (!difference.first) {
        return StepLine('+', secondFile, *difference.second);
    }
    return StepLine('-', firstFile, *difference.first) + After(*difference.first) + '\n' +
           StepLine('+', secondFile, *difference.second) + After(*difference.second);
}

bool PrintReport(const DifferenceReport& report) {
    if (report.json) {
        return PrintObjects(report);
    }
    for (const Difference& difference : report.differences) {
        if (!WriteLine(DifferenceLines(difference, report.firstFile, report.secondFile))) {
            return false;
        }
    }
    const size_t count = report.differences.size();
    return WriteLine(count == 0
                         ? report.same
                         : std::to_string(count) + (count == 1 ? " difference" : " differences"));
}

}  // namespace applist::sim
