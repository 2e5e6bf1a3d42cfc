// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// Runs i18n_get_text() in a child process, because a process reads its languages at the start.

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* TITLE = "TV_DATA_SERVICE_LIST";
constexpr const char* ENGLISH_TITLE = "Data services";

// A program with its catalogues in a temporary folder, laid out as installed.
class Text : public testing::Test {
protected:
    Text() {
        fs::create_directories(m_root.path() / "bin");
        fs::create_directories(m_root.path() / "share");
        fs::copy_file(TestProgram("text-lookup"), Program());
        fs::copy(BuiltProgram("../share/locale"), Locale(), fs::copy_options::recursive);
    }

    fs::path Program() const { return m_root.path() / "bin" / "text-lookup"; }
    fs::path Locale() const { return m_root.path() / "share" / "locale"; }
    fs::path Catalogue(const std::string& language) const {
        return Locale() / language / "LC_MESSAGES" / "applist.mo";
    }

    // Replaces a language's catalogue by one with only this content.
    void Write(const std::string& language, const std::string& id, const std::string& text) const {
        const fs::path source = m_root.path() / "source.po";
        std::ofstream(source)
            << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n"
            << "msgid \"" << id << "\"\nmsgstr \"" << text << "\"\n";
        fs::create_directories(Catalogue(language).parent_path());
        ChildProcess msgfmt({"msgfmt", "-o", Catalogue(language), source});
        ASSERT_EQ(msgfmt.WaitForExit(), 0) << msgfmt.Errors();
    }

    // The program's output for one argument when only these variables set the language.
    std::string Lookup(const std::string& argument,
                       const ChildProcess::Environment& languages) const {
        ChildProcess::Environment environment{
            {"LANGUAGE", {}}, {"LC_ALL", {}}, {"LC_MESSAGES", {}}, {"LANG", {}}};
        for (const auto& [name, value] : languages) {
            environment[name] = value;
        }
        ChildProcess lookup({Program(), argument}, environment);
        EXPECT_EQ(lookup.WaitForExit(), 0) << lookup.Errors();
        return lookup.Output();
    }

    static std::string Line(const std::string& text) { return text + "\n"; }

private:
    TemporaryDir m_root;
};

TEST_F(Text, IsInTheLanguageOfTheFirstVariableThatIsSet) {
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line("Servizi dati"));
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}, {"LC_MESSAGES", "es_AR.UTF-8"}}),
              Line("Servicios de datos"));
    EXPECT_EQ(Lookup(TITLE, {{"LC_MESSAGES", "it_IT.UTF-8"}, {"LC_ALL", "pt_BR.UTF-8"}}),
              Line("Serviços de dados"));
    EXPECT_EQ(Lookup(TITLE, {{"LC_ALL", "pt_BR.UTF-8"}, {"LANGUAGE", "ar"}}),
              Line("خدمات البيانات"));
}

TEST_F(Text, NeedsNoLocaleOnTheSystem) {
    EXPECT_EQ(Lookup(TITLE, {{"LC_ALL", "it_CH.ISO-8859-1"}}), Line("Servizi dati"));
}

TEST_F(Text, IsUtf8WhateverTheCharactersOfTheLocale) {
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "pt_BR.ISO-8859-1"}}), Line("Serviços de dados"));
}

TEST_F(Text, IsEnglishWithoutALanguage) {
    EXPECT_EQ(Lookup(TITLE, {}), Line(ENGLISH_TITLE));
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "C"}}), Line(ENGLISH_TITLE));
    EXPECT_EQ(Lookup(TITLE, {{"LC_ALL", "C.UTF-8"}}), Line(ENGLISH_TITLE));
    EXPECT_EQ(Lookup(TITLE, {{"LC_ALL", "POSIX"}}), Line(ENGLISH_TITLE));
}

TEST_F(Text, IsEnglishInALanguageWithoutACatalogue) {
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "fi_FI.UTF-8"}}), Line(ENGLISH_TITLE));
    fs::remove(Catalogue("it"));
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line(ENGLISH_TITLE));
}

TEST_F(Text, IsEnglishWhereTheCatalogueLacksTheMessage) {
    Write("it", "SID_NOT_AVAILABLE", "Non disponibile");
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line(ENGLISH_TITLE));
    EXPECT_EQ(Lookup("SID_NOT_AVAILABLE", {{"LANG", "it_IT.UTF-8"}}), Line("Non disponibile"));
}

TEST_F(Text, IsInTheNextLanguageOfTheListBeforeItIsEnglish) {
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "C.UTF-8"}, {"LANGUAGE", "fi:pt_BR:it"}}),
              Line("Serviços de dados"));
}

TEST_F(Text, OfACountryGoesBeforeThatOfItsLanguage) {
    EXPECT_EQ(Lookup("ALERT_CLOSE_HINT", {{"LANG", "es_UY.UTF-8"}}),
              Line("Presioná OK para cerrar"));
    EXPECT_EQ(Lookup("ALERT_CLOSE_HINT", {{"LANG", "es_AR.UTF-8"}}),
              Line("Presioná OK para cerrar"));
    EXPECT_EQ(Lookup("ALERT_CLOSE_HINT", {{"LANG", "es_CL.UTF-8"}}), Line("Pulse OK para cerrar"));
}

TEST_F(Text, OfACountryFallsBackToThatOfItsLanguage) {
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "es_UY.UTF-8"}}), Line("Servicios de datos"));
}

TEST_F(Text, OfAnUnknownIdIsTheId) {
    EXPECT_EQ(Lookup("SID_NOBODY_KNOWS", {{"LANG", "it_IT.UTF-8"}}), Line("SID_NOBODY_KNOWS"));
}

TEST_F(Text, OfAnEmptyIdIsEmpty) {
    EXPECT_EQ(Lookup("", {{"LANG", "it_IT.UTF-8"}}), Line(""));
}

TEST_F(Text, RunsInTheDirectionOfTheLanguageThatIsShown) {
    EXPECT_EQ(Lookup("--direction", {{"LANG", "ar_EG.UTF-8"}}), Line("rtl"));
    EXPECT_EQ(Lookup("--direction", {{"LANG", "it_IT.UTF-8"}}), Line("ltr"));
    fs::remove(Catalogue("ar"));
    EXPECT_EQ(Lookup("--direction", {{"LANG", "ar_EG.UTF-8"}}), Line("ltr"));
}

TEST_F(Text, IsEnglishWithAnErrorLineWithoutAnyCatalogue) {
    fs::remove_all(Locale());
    const std::string error = Line(
        "log: No message catalogues: cannot find the program's folder share/locale; texts are "
        "English");
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line(ENGLISH_TITLE) + error);
    EXPECT_EQ(Lookup("--direction", {{"LANG", "ar_EG.UTF-8"}}), Line("ltr") + error);
    EXPECT_EQ(Lookup("SID_NOBODY_KNOWS", {}), Line("SID_NOBODY_KNOWS") + error);
}

TEST_F(Text, IsEnglishWithoutTheEnglishCatalogue) {
    fs::remove(Catalogue("en"));
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "fi_FI.UTF-8"}}), Line(ENGLISH_TITLE));
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line("Servizi dati"));
}

TEST_F(Text, IsEnglishWhereTheCatalogueIsCutShort) {
    fs::resize_file(Catalogue("it"), 10);
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line(ENGLISH_TITLE));
    fs::resize_file(Catalogue("en"), 10);
    EXPECT_EQ(Lookup(TITLE, {{"LANG", "it_IT.UTF-8"}}), Line(ENGLISH_TITLE));
}

TEST_F(Text, CompiledInIsThatOfTheEnglishCatalogue) {
    const std::vector<std::string> ids{"TEXT_DIRECTION",
                                       TITLE,
                                       "SID_DATA_SERVICE_IS_NOT_PROVIDED",
                                       "TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG",
                                       "SID_NOT_AVAILABLE",
                                       "ALERT_TITLE_NOTIFICATION",
                                       "ALERT_TITLE_UNAVAILABLE",
                                       "ALERT_CLOSE_HINT"};
    std::vector<std::string> translated;
    for (const std::string& id : ids) {
        translated.push_back(Lookup(id, {}));
        EXPECT_NE(translated.back(), Line(id));
    }
    fs::remove(Catalogue("en"));
    for (size_t i = 0; i < ids.size(); ++i) {
        EXPECT_EQ(Lookup(ids[i], {}), translated[i]) << ids[i];
    }
}

}  // namespace
}  // namespace applist::test
