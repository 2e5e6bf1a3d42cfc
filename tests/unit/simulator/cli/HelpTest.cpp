// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The table of commands, and the manual page of the scenario language.
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

#include "cli/Commands.h"
#include "scenario/Statement.h"

namespace applist::sim {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using tools::CommandHelp;
using tools::ProgramHelp;

const std::vector<Option> GENERAL_OPTIONS{tools::HelpOption(), tools::VersionOption()};

std::string Page(const std::string& name) {
    const char* source = std::getenv("APPLIST_SOURCE");
    std::ifstream file(std::filesystem::path(source != nullptr ? source : ".") / "docs/man" / name);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), {}};
}

std::multiset<std::string> Matches(const std::string& text, const std::string& pattern) {
    const std::regex regex(pattern);
    std::multiset<std::string> found;
    for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
        found.insert((*match)[1].str());
    }
    return found;
}

TEST(CommandTable, GivesOptionsOfOneNameOneMeaning) {
    std::map<std::string, Option> byName;
    std::map<char, std::string> byLetter;
    for (const Command& command : tools::TheProgram().commands) {
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
        for (const Command& command : tools::TheProgram().commands) {
            for (const Option& option : command.options) {
                EXPECT_NE(option.name, general.name) << command.name;
                EXPECT_TRUE(option.letter == '\0' || option.letter != general.letter);
            }
        }
    }
}

TEST(CommandHelp, ListsEverySubcommandAndExplainsEachWithExamples) {
    for (const Command& command : tools::TheProgram().commands) {
        EXPECT_THAT(ProgramHelp(tools::TheProgram()), HasSubstr("\n  " + command.name + " "));
        const std::string help = CommandHelp(tools::TheProgram(), command);
        EXPECT_THAT(help, HasSubstr("\nExamples:\n"));
        EXPECT_THAT(help, HasSubstr("javamw-sim " + command.name));
        EXPECT_THAT(help, HasSubstr("\nExit status:\n  0  "));
    }
}

TEST(CommandHelp, FitsTerminals) {
    for (const Command& command : tools::TheProgram().commands) {
        EXPECT_THAT(Matches(CommandHelp(tools::TheProgram(), command), "(.{91,})"), IsEmpty())
            << command.name;
    }
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
