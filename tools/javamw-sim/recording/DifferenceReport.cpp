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

void WriteStep(JsonWriter& writer, const char* member, const std::string& file, const Step& step) {
    writer.Object(member)
        .Text("file", file)
        .Number("line", static_cast<int64_t>(step.line))
        .Number("us", step.time)
        .Text("text", step.text)
        .EndObject();
}

std::string Json(const DifferenceReport& report) {
    JsonWriter writer;
    writer.Array();
    for (const Difference& difference : report.differences) {
        writer.Object();
        if (difference.first) {
            WriteStep(writer, "first", report.firstFile, *difference.first);
        }
        if (difference.second) {
            WriteStep(writer, "second", report.secondFile, *difference.second);
        }
        writer.EndObject();
    }
    writer.EndArray();
    return writer.Finish();
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
        return WriteLine(Json(report));
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
