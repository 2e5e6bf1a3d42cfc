// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// Tests the translators' catalogue files.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ChildProcess.h"

namespace applist::test {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::IsSubsetOf;

fs::path Source() {
    return std::getenv("APPLIST_SOURCE");
}

std::string Read(const fs::path& file) {
    std::ifstream in(file);
    EXPECT_TRUE(in.good()) << file;
    return {std::istreambuf_iterator<char>(in), {}};
}

// All matches of the pattern's group in the text.
std::set<std::string> Matches(const std::string& text, const char* pattern) {
    const std::regex regex(pattern, std::regex::ECMAScript | std::regex::multiline);
    std::set<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        found.insert((*match)[1]);
    }
    return found;
}

std::set<std::string> Template() {
    return Matches(Read(Source() / "po" / "applist.pot"), R"re(^msgid "(.+)"$)re");
}

// All ids that the source code uses.
std::set<std::string> UsedIds() {
    std::set<std::string> used;
    for (const char* folder : {"src", "platform", "menu-provider"}) {
        for (const auto& file : fs::recursive_directory_iterator(Source() / folder)) {
            if (file.path().extension() == ".cpp") {
                used.merge(Matches(Read(file.path()), R"re(i18n_get_text\(\s*"(.+?)")re"));
            }
        }
    }
    return used;
}

int StatusOf(const std::vector<std::string>& command) {
    ChildProcess process(command);
    const int status = process.WaitForExit().value_or(-1);
    EXPECT_EQ(status, 0) << process.Errors();
    return status;
}

class Catalogue : public testing::TestWithParam<std::string> {
protected:
    const fs::path file = Source() / "po" / (GetParam() + ".po");
};

TEST_P(Catalogue, IsWellFormed) {
    EXPECT_EQ(StatusOf({"msgfmt", "--check", "--output-file=/dev/null", file}), 0);
}

TEST_P(Catalogue, NamesItsLanguageAndItsCharacters) {
    const std::string text = Read(file);
    EXPECT_NE(text.find("\"Language: " + GetParam() + "\\n\""), std::string::npos);
    EXPECT_NE(text.find("charset=UTF-8"), std::string::npos);
}

TEST_P(Catalogue, HoldsNoIdThatTheTemplateDoesNot) {
    EXPECT_THAT(Matches(Read(file), R"re(^msgid "(.+)"$)re"), IsSubsetOf(Template()));
}

TEST_P(Catalogue, SaysOfEachTextWhereItAppears) {
    const std::string text = Read(file);
    EXPECT_EQ(Matches(text, R"re(^msgid "(.+)"$)re"),
              Matches(text, R"re(^#\. .*\nmsgid "(.+)"$)re"));
}

TEST_P(Catalogue, IsBuiltWithTheProgram) {
    EXPECT_TRUE(
        fs::exists(BuiltProgram("../share/locale/" + GetParam() + "/LC_MESSAGES/applist.mo")));
}

INSTANTIATE_TEST_SUITE_P(Languages, Catalogue,
                         testing::Values("ar", "en", "es", "es_AR", "es_UY", "it", "pt_BR"),
                         [](const auto& language) { return language.param; });

// es_AR and es_UY contain only the differences from es.
class WholeCatalogue : public Catalogue {};

TEST_P(WholeCatalogue, TranslatesEveryId) {
    EXPECT_EQ(StatusOf({"msgcmp", file, Source() / "po" / "applist.pot"}), 0);
}

INSTANTIATE_TEST_SUITE_P(Languages, WholeCatalogue,
                         testing::Values("ar", "en", "es", "it", "pt_BR"),
                         [](const auto& language) { return language.param; });

TEST(Catalogues, KnowEveryIdThatTheProgramUses) {
    const std::set<std::string> used = UsedIds();
    EXPECT_THAT(used, Contains("SID_NOT_AVAILABLE"));
    EXPECT_THAT(used, IsSubsetOf(Template()));
}

TEST(Catalogues, AreAllListedForTheBuild) {
    std::set<std::string> files;
    for (const auto& file : fs::directory_iterator(Source() / "po")) {
        if (file.path().extension() == ".po") {
            files.insert(file.path().stem());
        }
    }
    EXPECT_EQ(Matches(Read(Source() / "po" / "LINGUAS"), "^([a-z].*)$"), files);
}

}  // namespace
}  // namespace applist::test
