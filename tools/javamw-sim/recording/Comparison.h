// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "recording/RecordedMessage.h"

namespace applist::sim {

/// What counts when two recordings are compared.
struct CompareOptions {
    bool names = false;                ///< The unique bus names; else who is who among them.
    std::optional<int64_t> tolerance;  ///< Microseconds by which times may differ; none: any.
};

/// Something that can be compared: a message, or a call together with its answer.
struct Step {
    size_t line = 0;   ///< Of the call, where there is one.
    int64_t time = 0;  ///< Of the answer, where there is one.
    std::string key;   ///< Equal iff the steps are.
    std::string text;  ///< For people, on one line.
};

/// The steps of recording. A call stands where its answer is, or at the end without one: when
/// exactly a call was made among the messages of the other side is chance.
std::vector<Step> StepsOf(const Recording& recording, bool names);

/// What one side has and the other has not, or at another time.
struct Difference {
    std::optional<Step> first;   ///< Nothing: only the second has it.
    std::optional<Step> second;  ///< Nothing: only the first has it. Both: at different times.
};

/// What tells first from second, in order. After a difference both go on at the nearest step that
/// they have in common; where there is none near, all that follows differs.
std::vector<Difference> Compare(const std::vector<Step>& first, const std::vector<Step>& second,
                                std::optional<int64_t> tolerance);

struct DifferenceReport {
    const std::vector<Difference>& differences;
    std::string firstFile;
    std::string secondFile;
    std::string same;   ///< The line to print when nothing differs.
    bool json = false;  ///< JSON objects instead of lines for people.
};

/// What differs, as lines: "- FILE:12: ..." for what only the first has, "+ FILE:15: ..." for what
/// only the second has, both with their times for what comes at different ones.
std::string DifferenceLines(const Difference& difference, const std::string& firstFile,
                            const std::string& secondFile);

/// Prints report on standard output. False when nobody can read it.
[[nodiscard]] bool PrintReport(const DifferenceReport& report);

}  // namespace applist::sim
