// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The tests that docs/accessibility.md names. The page's measured values belong to those tests.
#include <filesystem>
#include <map>
#include <regex>

#include <gtest/gtest.h>

#include "support/AccessibilityPage.h"
#include "support/SourceFile.h"

namespace applist::test {
namespace {

/// The source of each test, by the test's name.
std::map<std::string, std::string> TestsInTheSource() {
    static const std::regex definition(R"(\nTEST(?:_[FP])?\((\w+),\s*(\w+)\))");
    std::map<std::string, std::string> tests;
    const std::filesystem::path root = SourcePath("");
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / "tests")) {
        const std::string text =
            entry.path().extension() == ".cpp"
                ? SourceFile(std::filesystem::relative(entry.path(), root).string())
                : "";
        for (std::sregex_iterator found(text.begin(), text.end(), definition), end; found != end;
             ++found) {
            tests[(*found)[1].str() + "." + (*found)[2].str()] = text;
        }
    }
    return tests;
}

TEST(TheAccessibilityPage, NamesTestsThatExist) {
    const std::string page = SourceFile(ACCESSIBILITY_PAGE);
    const auto tests = TestsInTheSource();
    static const std::regex reference(R"(`(\w+\.\w+)`)");
    int named = 0;
    for (std::sregex_iterator found(page.begin(), page.end(), reference), end; found != end;
         ++found, ++named) {
        EXPECT_TRUE(tests.contains((*found)[1].str())) << (*found)[1];
    }
    EXPECT_GT(named, 20);
}

// Otherwise a value that no test measures any more would stay.
TEST(TheAccessibilityPage, StatesOnlyValuesOfTestsThatMeasureTheClause) {
    const std::string page = SourceFile(ACCESSIBILITY_PAGE);
    const auto tests = TestsInTheSource();
    static const std::regex row(
        R"(\n\| ((?:WCAG )?[\d.]+ )[^|]*\|[^|]*\| \d[^|]*\|[^|]*\| `([^`]*)` \|)");
    int measured = 0;
    for (std::sregex_iterator found(page.begin(), page.end(), row), end; found != end;
         ++found, ++measured) {
        const auto test = tests.find((*found)[2].str());
        ASSERT_NE(test, tests.end()) << found->str();
        EXPECT_NE(test->second.find('"' + (*found)[1].str()), std::string::npos) << found->str();
    }
    EXPECT_GT(measured, 10);
}

}  // namespace
}  // namespace applist::test
