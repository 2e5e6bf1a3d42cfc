// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <gtest/gtest.h>

namespace applist::test {

/// docs/accessibility.md, in the source tree.
inline constexpr const char* ACCESSIBILITY_PAGE = "docs/accessibility.md";

/// Succeeds iff the page's row of this clause has the verdict and the measured value, and names the
/// running test. If the environment variable APPLIST_SAVE_MEASURED is set, writes them into the row
/// instead; run one test at a time then.
testing::AssertionResult IsStated(const std::string& clause, bool met, const std::string& measured);

/// The value with this number of decimals and its unit.
std::string WithUnit(double value, int decimals, const std::string& unit);

}  // namespace applist::test
