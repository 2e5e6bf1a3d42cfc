// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// docs/accessibility.md must state what the tests measure and name tests that exist.
#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

std::filesystem::path Source() {
    return std::getenv("APPLIST_SOURCE");
}

std::string Read(const std::filesystem::path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string Formatted(const char* format, double value) {
    std::array<char, 32> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), format, value));
    return text.data();
}

/// The largest contrast of a pixel in the box with the ground.
double ContrastIn(const Picture& picture, const Box& box, uint32_t ground) {
    const Picture part = picture.Cut(box);
    double best = 1;
    for (const uint32_t pixel : part.pixels) {
        best = std::max(best, Contrast(pixel, ground));
    }
    return best;
}

std::vector<std::string> ContrastLines(Variant variant, const std::string& suffix) {
    ThemedList list({variant});
    list.Show({"First", "Second", "Third"}, 1);
    const Picture picture = Draw(list.window());
    const uint32_t panel = picture.At(BoxOf(list.list()).x + 2, BoxOf(list.list()).Bottom() - 2);
    const Box box = BoxOf(list.row("Second"), "bar");
    const uint32_t bar = picture.At(box.Right() - box.height / 4, box.CentreY());
    const auto line = [&](const std::string& name, double contrast) {
        return "| " + name + suffix + ", contrast | " + Formatted("%.1f:1", contrast) + " |";
    };
    return {
        line("row on the panel", ContrastIn(picture, TextBoxOf(list.row("First"), "name"), panel)),
        line("focused row on its bar",
             ContrastIn(picture, TextBoxOf(list.row("Second"), "name"), bar)),
        line("bar on the panel", Contrast(bar, panel))};
}

std::string AngleLine(const Look& look) {
    ThemedList list(look);
    const double angle = AngleOf(HeightOfCapitalH(list), look.height);
    return "| capital H at " + std::to_string(look.textSize) + " %" +
           (look.variant == Variant::HIGH_CONTRAST ? " in high contrast" : "") + " | " +
           Formatted("%.2f°", angle) + " |";
}

// The toolkit leaks memory in each start, so each case has only one.
class TheAccessibilityPage : public testing::TestWithParam<std::tuple<Variant, int>> {
protected:
    const std::string page = Read(Source() / "docs/accessibility.md");
    const Variant variant = std::get<0>(GetParam());
};

TEST_P(TheAccessibilityPage, StatesTheMeasuredAngle) {
    EXPECT_THAT(page,
                testing::HasSubstr(AngleLine({variant, 1080, false, std::get<1>(GetParam())})));
}

TEST_P(TheAccessibilityPage, StatesTheMeasuredContrasts) {
    const std::string suffix = variant == Variant::HIGH_CONTRAST ? " in high contrast" : "";
    for (const std::string& line : ContrastLines(variant, suffix)) {
        EXPECT_THAT(page, testing::HasSubstr(line));
    }
}

INSTANTIATE_TEST_SUITE_P(Looks, TheAccessibilityPage,
                         testing::Combine(testing::Values(Variant::STANDARD,
                                                          Variant::HIGH_CONTRAST),
                                          testing::Values(100, 175)));

std::set<std::string> TestsInTheSource() {
    static const std::regex definition(R"(\nTEST(?:_[FP])?\((\w+), (\w+)\))");
    std::set<std::string> tests;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(Source() / "tests")) {
        const std::string text = entry.path().extension() == ".cpp" ? Read(entry.path()) : "";
        for (std::sregex_iterator found(text.begin(), text.end(), definition), end; found != end;
             ++found) {
            tests.insert((*found)[1].str() + "." + (*found)[2].str());
        }
    }
    return tests;
}

TEST(AccessibilityClauses, NameTestsThatExist) {
    const std::string page = Read(Source() / "docs/accessibility.md");
    const std::set<std::string> tests = TestsInTheSource();
    static const std::regex reference(R"(`(\w+\.\w+)`)");
    int named = 0;
    for (std::sregex_iterator found(page.begin(), page.end(), reference), end; found != end;
         ++found, ++named) {
        EXPECT_TRUE(tests.contains((*found)[1].str())) << (*found)[1];
    }
    EXPECT_GT(named, 20);
}

}  // namespace
}  // namespace applist::test
