// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Runs bash, zsh and fish: each completes exactly the words that the program accepts.
#include <cstdlib>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "cli/Program.h"
#include "link/Protocol.h"
#include "support/ChildProcess.h"

namespace applist::sim {
namespace {

using test::ChildProcess;
using testing::Contains;
using testing::IsEmpty;

using Words = std::set<std::string>;

std::string File(const std::string& name) {
    const char* source = std::getenv("APPLIST_SOURCE");
    return std::string(source != nullptr ? source : ".") + "/tools/javamw-sim/completion/" + name;
}

/// Runs script in the shell with the completion file and the command line as arguments. Returns the
/// printed words, each up to a tab.
Words Ask(const std::vector<std::string>& shell, const std::string& script, const std::string& file,
          const std::string& line) {
    std::vector<std::string> command = shell;
    command.insert(command.end(), {script, File(file), line});
    ChildProcess process(command, {{"LC_ALL", "C.UTF-8"}});
    EXPECT_EQ(process.WaitForExit(), 0) << process.Errors();
    EXPECT_EQ(process.Errors(), "");
    Words words;
    std::istringstream lines(process.Output());
    for (std::string word; std::getline(lines, word);) {
        words.insert(word.substr(0, word.find('\t')));
    }
    words.erase("");
    return words;
}

Words Bash(const std::string& line) {
    return Ask({"bash", "--norc", "-c"},
               R"(source "$0"; read -ra COMP_WORDS <<<"$1"; [[ $1 == *' ' ]] && COMP_WORDS+=('')
                  COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _javamw_sim; printf '%s\n' "${COMPREPLY[@]}")",
               "javamw-sim.bash", line);
}

Words Fish(const std::string& line) {
    return Ask({"fish", "--no-config", "-c"}, "source $argv[1]; complete -C $argv[2]",
               "javamw-sim.fish", line);
}

/// Returns the entries that the completion passes to zsh for the arguments of a command.
Words Zsh(const std::string& command) {
    return Ask({"zsh", "-fc"},
               R"(_arguments() { [[ $1 == -C ]] || print -rl -- "$@" }
                  _describe() { print -rl -- ${commands%%:*} }
                  complete_it() { local state=argument; local -a words=($2)
                      [[ -n $2 ]] || state=command; source $1 }
                  complete_it "$0" "$1")",
               "_javamw-sim", command);
}

/// Returns the long options in the entries for zsh: "(-j --json)-j[help]",
/// "*--service=[help]:service:".
Words LongOptions(const Words& entries) {
    Words options;
    for (const std::string& text : entries) {
        const size_t exclusions = text.starts_with('(') ? text.find(')') : 0;
        const size_t begin = text.find("--", exclusions);
        const size_t end = text.find_first_of("=[", begin);
        if (begin != std::string::npos && end != std::string::npos) {
            options.insert(text.substr(begin, end - begin));
        }
    }
    return options;
}

Words CommandNames() {
    Words names;
    for (const Command& command : SimulatorProgram().commands) {
        names.insert(command.name);
    }
    return names;
}

Words OptionsOf(const Command& command) {
    Words options{"--help"};
    for (const Option& option : command.options) {
        options.insert("--" + option.name);
    }
    return options;
}

Words FunctionNames() {
    Words names;
    for (const Function function : FUNCTIONS) {
        names.insert(std::string(NameOf(function)));
    }
    return names;
}

TEST(BashCompletion, OffersEveryCommand) {
    EXPECT_EQ(Bash("javamw-sim "), CommandNames());
    EXPECT_EQ(Bash("javamw-sim se"), Words{"serve"});
    EXPECT_EQ(Bash("javamw-sim --v"), Words{"--version"});
}

TEST(BashCompletion, OffersTheOptionsOfEachCommandAndNoOther) {
    for (const Command& command : SimulatorProgram().commands) {
        EXPECT_EQ(Bash("javamw-sim " + command.name + " --"), OptionsOf(command));
    }
}

TEST(BashCompletion, OffersFunctionsAndValues) {
    EXPECT_EQ(Bash("javamw-sim call "), FunctionNames());
    EXPECT_EQ(Bash("javamw-sim replay --speed m"), Words{"max"});
    EXPECT_THAT(Bash("javamw-sim watch --timeout "), IsEmpty());
    EXPECT_THAT(Bash("javamw-sim watch "), IsEmpty());
}

TEST(BashCompletion, OffersFilesWhereFilesAreTaken) {
    const std::string begin = File("javamw-sim.b");
    for (const char* before : {"run ", "run --check ", "serve --items ", "serve -b ",
                               "serve --items = ", "applications ", "replay ", "compare x "}) {
        EXPECT_EQ(Bash(std::string("javamw-sim ") + before + begin),
                  Words{File("javamw-sim.bash")});
    }
}

TEST(FishCompletion, OffersEveryCommand) {
    EXPECT_EQ(Fish("javamw-sim "), CommandNames());
    EXPECT_THAT(Fish("javamw-sim --v"), Contains("--version"));
}

TEST(FishCompletion, OffersTheOptionsOfEachCommandAndNoOther) {
    for (const Command& command : SimulatorProgram().commands) {
        EXPECT_EQ(Fish("javamw-sim " + command.name + " --"), OptionsOf(command)) << command.name;
    }
}

TEST(FishCompletion, OffersFunctions) {
    EXPECT_EQ(Fish("javamw-sim call "), FunctionNames());
}

TEST(ZshCompletion, OffersEveryCommand) {
    EXPECT_EQ(Zsh(""), CommandNames());
}

TEST(ZshCompletion, OffersTheOptionsOfEachCommandAndNoOther) {
    for (const Command& command : SimulatorProgram().commands) {
        EXPECT_EQ(LongOptions(Zsh(command.name)), OptionsOf(command)) << command.name;
    }
}

TEST(ZshCompletion, OffersFunctions) {
    std::string functions;
    for (const Function function : FUNCTIONS) {
        functions += (functions.empty() ? "" : " ") + std::string(NameOf(function));
    }
    EXPECT_THAT(Zsh("call"), Contains("1:function:(" + functions + ")"));
}

}  // namespace
}  // namespace applist::sim
