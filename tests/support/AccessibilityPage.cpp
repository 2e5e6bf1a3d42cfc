// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/AccessibilityPage.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "support/SourceFile.h"

namespace applist::test {
namespace {

/// The name of the running test without those of its instance and parameter.
std::string RunningTest() {
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::string suite = test->test_suite_name();
    std::string name = test->name();
    suite.erase(0, suite.find('/') + 1);
    name.resize(std::min(name.find('/'), name.size()));
    return suite + "." + name;
}

/// The content of a cell, counted from 0.
std::string Cell(const std::string& row, int index) {
    constexpr size_t BORDER = 3;
    size_t start = 2;
    for (int cell = 0; cell < index; ++cell) {
        start = row.find(" | ", start) + BORDER;
    }
    return row.substr(start, row.find(" |", start) - start);
}

}  // namespace

testing::AssertionResult IsStated(const std::string& clause, bool met,
                                  const std::string& measured) {
    constexpr int REASON = 3;
    std::string page = SourceFile(ACCESSIBILITY_PAGE);
    const size_t start = page.find("\n| " + clause + " | ");
    if (start == std::string::npos) {
        return testing::AssertionFailure() << "the page does not have a row '" << clause << "'";
    }
    const size_t length = page.find('\n', start + 1) - start - 1;
    const std::string stated = page.substr(start + 1, length);
    const std::string row = "| " + clause + (met ? " | met | " : " | not met | ") + measured +
                            " | " + Cell(stated, REASON) + " | `" + RunningTest() + "` |";
    if (std::getenv("APPLIST_SAVE_MEASURED") != nullptr) {
        std::ofstream(SourcePath(ACCESSIBILITY_PAGE)) << page.replace(start + 1, length, row);
    } else if (stated != row) {
        return testing::AssertionFailure() << "the page states\n  " << stated << "\nbut this is\n  "
                                           << row << "\nTo renew the page, run scripts/pictures";
    }
    return testing::AssertionSuccess();
}

std::string WithUnit(double value, int decimals, const std::string& unit) {
    std::array<char, 32> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), "%.*f", decimals, value));
    return text.data() + unit;
}

}  // namespace applist::test
