// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The command line, its help and its manual page name the same commands and options.
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cli/Program.h"
#include "scenario/Statement.h"
#include "shared/Help.h"

namespace applist::sim {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using tools::CommandHelp;
using tools::ProgramHelp;

const std::vector<Option> GENERAL_OPTIONS{tools::HelpOption(), tools::VersionOption()};

std::string Page(const std::string& name) {
    const char* source = std::getenv("APPLIST_SOURCE");
    std::ifstream file(std::filesystem::path(source != nullptr ? source : ".") / "docs/man" / name);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Returns the lines of page between the line begin and the next heading.
std::string Section(const std::string& page, const std::string& begin) {
    const size_t start = page.find("\n" + begin + "\n");
    EXPECT_NE(start, std::string::npos) << begin;
    if (start == std::string::npos) {
        return {};
    }
    const size_t body = start + begin.size() + 2;
    // Includes the line end before the first option, because the pattern of an option starts with
    // it.
    const size_t end = std::min(page.find("\n.Ss ", body), page.find("\n.Sh ", body));
    return page.substr(body - 1, end - body + 2);
}

std::multiset<std::string> Matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    std::multiset<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        found.insert((*match)[1].str());
    }
    return found;
}

/// An option as the manual writes it: "-a, -address Ns = Ns Ar ADDRESS" after the first Fl.
std::string InManual(const Option& option) {
    const std::string letter =
        option.letter == '\0' ? std::string() : std::string(1, option.letter) + " , ";
    return letter + "-" + option.name + (option.value.empty() ? "" : " Ns = Ns Ar " + option.value);
}

std::multiset<std::string> InManual(const std::vector<Option>& options) {
    std::multiset<std::string> written;
    for (const Option& option : options) {
        written.insert(InManual(option));
    }
    return written;
}

TEST(CommandTable, GivesOptionsOfOneNameOneMeaning) {
    std::map<std::string, Option> byName;
    std::map<char, std::string> byLetter;
    for (const Command& command : SimulatorProgram().commands) {
        for (const Option& option : command.options) {
            const Option& first = byName.try_emplace(option.name, option).first->second;
            EXPECT_EQ(option.letter, first.letter) << command.name << " --" << option.name;
            EXPECT_EQ(option.value.empty(), first.value.empty()) << option.name;
            if (option.letter != '\0') {
                EXPECT_EQ(byLetter.try_emplace(option.letter, option.name).first->second,
                          option.name);
            }
        }
    }
}

TEST(CommandTable, LeavesTheGeneralOptionsToTheProgram) {
    for (const Option& general : GENERAL_OPTIONS) {
        for (const Command& command : SimulatorProgram().commands) {
            for (const Option& option : command.options) {
                EXPECT_NE(option.name, general.name) << command.name;
                EXPECT_TRUE(option.letter == '\0' || option.letter != general.letter);
            }
        }
    }
}

TEST(CommandHelp, ListsEverySubcommandAndExplainsEachWithExamples) {
    for (const Command& command : SimulatorProgram().commands) {
        EXPECT_THAT(ProgramHelp(SimulatorProgram()), HasSubstr("\n  " + command.name + " "));
        const std::string help = CommandHelp(SimulatorProgram(), command);
        EXPECT_THAT(help, HasSubstr("\nExamples:\n"));
        EXPECT_THAT(help, HasSubstr("javamw-sim " + command.name));
        EXPECT_THAT(help, HasSubstr("\nExit status:\n  0  "));
    }
}

TEST(CommandHelp, FitsTerminals) {
    for (const Command& command : SimulatorProgram().commands) {
        EXPECT_THAT(Matches(CommandHelp(SimulatorProgram(), command), "(.{91,})"), IsEmpty())
            << command.name;
    }
}

TEST(Manual, HasEveryOptionOfEverySubcommandAndNoOther) {
    const std::string page = Page("javamw-sim.1");
    size_t sections = 0;
    for (const Command& command : SimulatorProgram().commands) {
        const std::string section = Section(page, ".Ss " + command.name);
        EXPECT_EQ(Matches(section, "\n\\.It Fl ([^\n]*)"), InManual(command.options))
            << command.name;
        ++sections;
    }
    EXPECT_THAT(Matches(page, "\n\\.Ss ([a-z]+)"), SizeIs(sections));
}

TEST(Manual, HasTheGeneralOptions) {
    const std::string section = Section(Page("javamw-sim.1"), ".Sh DESCRIPTION");
    EXPECT_EQ(Matches(section, "\n\\.It Fl ([^\n]*)"), InManual(GENERAL_OPTIONS));
}

TEST(Manual, HasTheExitCodesOfTheHelp) {
    const std::string section = Section(Page("javamw-sim.1"), ".Sh EXIT STATUS");
    EXPECT_EQ(Matches(section, "\\.It ([0-9]+)"),
              Matches(ProgramHelp(SimulatorProgram()), "\n  ([0-9])  "));
}

// The page writes a backslash as \e, and a bracket that ends a line by its name.
std::string Unescaped(const std::string& text) {
    const std::string bracketed = std::regex_replace(text, std::regex("\\\\\\(rB"), "]");
    return std::regex_replace(bracketed, std::regex("\\\\e"), "\\");
}

TEST(Manual, HasEveryStatementOfTheLanguageAndNoOther) {
    std::multiset<std::string> expected;
    for (const StatementForm& form : StatementForms()) {
        expected.insert(form.keyword + (form.words.empty() ? "" : " Ar " + form.words));
    }
    EXPECT_EQ(Matches(Unescaped(Page("applist-scenario.5")), "\n\\.It Ic ([^\n]*)"), expected);
}

TEST(Manual, HasExamplesThatAreScenarios) {
    const std::string page = Page("applist-scenario.5");
    const std::string begin = "\n.Bd -literal -offset indent\n";
    size_t examples = 0;
    for (size_t at = page.find(begin); at != std::string::npos; at = page.find(begin, at + 1)) {
        const size_t text = at + begin.size();
        const auto parsed =
            ParseScenario(Unescaped(page.substr(text, page.find("\n.Ed", text) - text)));
        EXPECT_THAT(parsed.statements, testing::Not(IsEmpty()));
        for (const ScenarioError& error : parsed.errors) {
            ADD_FAILURE() << "example line " << error.line << ": " << error.message;
        }
        ++examples;
    }
    EXPECT_GE(examples, 3U);
}

}  // namespace
}  // namespace applist::sim
