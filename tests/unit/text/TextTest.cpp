// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
// Runs i18n_get_text() in a child process, because a process reads its languages at the start.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace fs = std::filesystem;

namespace applist::test {
namespace {

using Languages = ChildProcess::Environment;

constexpr const char* TITLE = "TV_DATA_SERVICE_LIST";
constexpr const char* HINT = "ALERT_CLOSE_HINT";
constexpr const char* DIRECTION = "--direction";
constexpr const char* ENGLISH_TITLE = "Data services";
const Languages ITALIAN{{"LANG", "it_IT.UTF-8"}};
const Languages FINNISH{{"LANG", "fi_FI.UTF-8"}};
const Languages ARABIC{{"LANG", "ar_EG.UTF-8"}};

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
        ChildProcess msgfmt({"msgfmt", "-o", Catalogue(language), source});
        ASSERT_EQ(msgfmt.WaitForExit(), 0) << msgfmt.Errors();
    }

    // Expects the program's output for one argument if only these variables set the language.
    void ExpectText(const std::string& argument, const Languages& languages,
                    const std::string& expected) const {
        EXPECT_EQ(Lookup(argument, languages), expected + "\n") << argument;
    }

    std::string Lookup(const std::string& argument, const Languages& languages) const {
        Languages environment{{"LANGUAGE", {}}, {"LC_ALL", {}}, {"LC_MESSAGES", {}}, {"LANG", {}}};
        for (const auto& [name, value] : languages) {
            environment[name] = value;
        }
        ChildProcess lookup({Program(), argument}, environment);
        EXPECT_EQ(lookup.WaitForExit(), 0) << lookup.Errors();
        return lookup.Output();
    }

private:
    TemporaryDir m_root;
};

TEST_F(Text, IsInTheLanguageOfTheFirstVariableThatIsSet) {
    ExpectText(TITLE, ITALIAN, "Servizi dati");
    ExpectText(TITLE, {{"LANG", "it_IT.UTF-8"}, {"LC_MESSAGES", "es_AR.UTF-8"}},
               "Servicios de datos");
    ExpectText(TITLE, {{"LC_MESSAGES", "it_IT.UTF-8"}, {"LC_ALL", "pt_BR.UTF-8"}},
               "Serviços de dados");
    ExpectText(TITLE, {{"LC_ALL", "pt_BR.UTF-8"}, {"LANGUAGE", "ar"}}, "خدمات البيانات");
    ExpectText(TITLE, {{"LANG", "C.UTF-8"}, {"LANGUAGE", "fi:pt_BR:it"}}, "Serviços de dados");
}

TEST_F(Text, IsUtf8AndNeedsNoLocaleOnTheSystem) {
    ExpectText(TITLE, {{"LC_ALL", "it_CH.ISO-8859-1"}}, "Servizi dati");
    ExpectText(TITLE, {{"LANG", "pt_BR.ISO-8859-1"}}, "Serviços de dados");
}

TEST_F(Text, IsEnglishWithoutALanguageOrACatalogue) {
    for (const Languages& languages :
         {Languages{}, {{"LANG", "C"}}, {{"LC_ALL", "C.UTF-8"}}, {{"LC_ALL", "POSIX"}}, FINNISH}) {
        ExpectText(TITLE, languages, ENGLISH_TITLE);
    }
    fs::remove(Catalogue("it"));
    ExpectText(TITLE, ITALIAN, ENGLISH_TITLE);
}

TEST_F(Text, IsEnglishIfTheCatalogueLacksTheMessage) {
    Write("it", "SID_NOT_AVAILABLE", "Non disponibile");
    ExpectText(TITLE, ITALIAN, ENGLISH_TITLE);
    ExpectText("SID_NOT_AVAILABLE", ITALIAN, "Non disponibile");
}

TEST_F(Text, OfACountryReplacesThatOfItsLanguage) {
    ExpectText(HINT, {{"LANG", "es_UY.UTF-8"}}, "Presioná OK para cerrar");
    ExpectText(HINT, {{"LANG", "es_AR.UTF-8"}}, "Presioná OK para cerrar");
    ExpectText(HINT, {{"LANG", "es_CL.UTF-8"}}, "Pulse OK para cerrar");
    ExpectText(TITLE, {{"LANG", "es_UY.UTF-8"}}, "Servicios de datos");
}

TEST_F(Text, OfAnUnknownIdIsTheId) {
    ExpectText("SID_NOBODY_KNOWS", ITALIAN, "SID_NOBODY_KNOWS");
    ExpectText("", ITALIAN, "");
}

TEST_F(Text, RunsInTheDirectionOfTheLanguageThatIsShown) {
    ExpectText(DIRECTION, ARABIC, "rtl");
    ExpectText(DIRECTION, ITALIAN, "ltr");
    fs::remove(Catalogue("ar"));
    ExpectText(DIRECTION, ARABIC, "ltr");
}

TEST_F(Text, IsEnglishWithAnErrorLineWithoutAnyCatalogue) {
    fs::remove_all(Locale());
    const std::string error =
        "\nlog: No message catalogues: cannot find the program's folder share/locale; texts are "
        "English";
    ExpectText(TITLE, ITALIAN, ENGLISH_TITLE + error);
    ExpectText(DIRECTION, ARABIC, "ltr" + error);
    ExpectText("SID_NOBODY_KNOWS", {}, "SID_NOBODY_KNOWS" + error);
}

TEST_F(Text, IsEnglishWithoutTheEnglishCatalogue) {
    fs::remove(Catalogue("en"));
    ExpectText(TITLE, FINNISH, ENGLISH_TITLE);
    ExpectText(TITLE, ITALIAN, "Servizi dati");
}

TEST_F(Text, IsEnglishIfTheCatalogueIsTruncated) {
    fs::resize_file(Catalogue("it"), 10);
    ExpectText(TITLE, ITALIAN, ENGLISH_TITLE);
    fs::resize_file(Catalogue("en"), 10);
    ExpectText(TITLE, ITALIAN, ENGLISH_TITLE);
}

TEST_F(Text, CompiledInIsThatOfTheEnglishCatalogue) {
    const std::vector<std::string> ids{"TEXT_DIRECTION",
                                       TITLE,
                                       "SID_DATA_SERVICE_IS_NOT_PROVIDED",
                                       "TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG",
                                       "SID_NOT_AVAILABLE",
                                       "ALERT_TITLE_NOTIFICATION",
                                       "ALERT_TITLE_UNAVAILABLE",
                                       HINT};
    std::vector<std::string> translated;
    for (const std::string& id : ids) {
        translated.push_back(Lookup(id, {}));
        EXPECT_NE(translated.back(), id + "\n");
    }
    fs::remove(Catalogue("en"));
    for (size_t i = 0; i < ids.size(); ++i) {
        EXPECT_EQ(Lookup(ids[i], {}), translated[i]) << ids[i];
    }
}

}  // namespace
}  // namespace applist::test
