// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "recording/Recording.h"

namespace applist::sim {

/// Options of a comparison.
struct CompareOptions {
    bool names = false;  ///< Compares unique bus names; otherwise only the roles.
    /// Allowed difference of times in microseconds; absent: any.
    std::optional<int64_t> tolerance;
};

/// A unit of comparison: a message, or a call together with its reply.
struct Step {
    size_t line = 0;   ///< Line of the call, if it is one.
    int64_t time = 0;  ///< Time of the reply, if it has one.
    std::string key;   ///< Equal iff the steps are.
    std::string text;  ///< Text for people on one line.
};

/// Returns the steps of recording. A call is placed at its reply, or at the end if it has none,
/// because its position among the messages of the other side depends on timing.
std::vector<Step> StepsOf(const Recording& recording, bool names);

/// A step that only one side has, or that both have at different times.
struct Difference {
    std::optional<Step> first;   ///< Absent if only the second recording has the step.
    std::optional<Step> second;  ///< Absent if only the first recording has the step.
};

/// Returns the differences in order. After a difference, the comparison continues at the nearest
/// common step. If there is none nearby, all following steps differ.
std::vector<Difference> Compare(const std::vector<Step>& first, const std::vector<Step>& second,
                                std::optional<int64_t> tolerance);

struct DifferenceReport {
    const std::vector<Difference>& differences;
    std::string firstFile;
    std::string secondFile;
    std::string same;   ///< Line to print if there are no differences.
    bool json = false;  ///< JSON objects instead of lines for people.
};

/// Returns the lines of a difference: "- FILE:12: ..." for a step of the first file, "+ FILE:15:
/// ..." for a step of the second, both with their times if only the times differ.
std::string DifferenceLines(const Difference& difference, const std::string& firstFile,
                            const std::string& secondFile);

/// Prints report on standard output. Returns false if standard output cannot be written.
[[nodiscard]] bool PrintReport(const DifferenceReport& report);

}  // namespace applist::sim
