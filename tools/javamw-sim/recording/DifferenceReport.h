// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "recording/Comparison.h"

namespace applist::sim {

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
