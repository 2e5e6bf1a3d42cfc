// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The candidates for the words of a command line, and the scripts of the shells that ask for them.
#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gmock/gmock.h>

#include "shared/CommandLine.h"
#include "support/ChildProcess.h"

namespace applist::tools {
namespace {

using test::BuiltProgram;
using test::ChildProcess;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;

using Words = std::vector<std::string>;

const Program PROGRAM{
    .name = "tool",
    .version = "1",
    .purpose = "",
    .options = {{"json", 'j', "", "Print JSON"}},
    .commands = {{"copy",
                  "FILE KEY [on|off]",
                  "Copy",
                  {{"speed", 's', "N|max|min", "Speed"}, {"from", '\0', "FILE", "Source"}},
                  "",
                  nullptr},
                 {"item add", "KEY...", "Add", {}, "", nullptr},
                 {"item count", "", "Count", {}, "", nullptr}},
    .exitCodes = "",
    .values = {{"FILE", {}}, {"KEY", {"red", "green", "grey"}}}};

Words Complete(const Words& words) {
    return Candidates(PROGRAM, words);
}

TEST(Completion, OffersCommandsWordByWord) {
    EXPECT_THAT(Complete({""}), ElementsAre("copy\tCopy", "item"));
    EXPECT_THAT(Complete({}), ElementsAre("copy\tCopy", "item"));
    EXPECT_THAT(Complete({"--json", "c"}), ElementsAre("copy\tCopy"));
    EXPECT_THAT(Complete({"item", ""}), ElementsAre("add\tAdd", "count\tCount"));
    EXPECT_THAT(Complete({"paste", ""}), IsEmpty());
}

TEST(Completion, OffersTheOptionsOfTheCommandAndNoOther) {
    EXPECT_THAT(Complete({"-"}), ElementsAre("--version\tPrint the version", "--json\tPrint JSON",
                                             "--help\tPrint the help"));
    EXPECT_THAT(Complete({"copy", "--"}),
                ElementsAre("--speed\tSpeed", "--from\tSource", "--json\tPrint JSON",
                            "--help\tPrint the help"));
    EXPECT_THAT(Complete({"item", "count", "--j"}), ElementsAre("--json\tPrint JSON"));
}

TEST(Completion, OffersTheValuesOfAnOption) {
    for (const Words& words : {Words{"copy", "--speed", "m"},
                               {"copy", "-s", "m"},
                               {"copy", "--speed=m"},
                               {"copy", "--speed", "=", "m"}}) {
        EXPECT_THAT(Complete(words), ElementsAre("max", "min"));
    }
    EXPECT_THAT(Complete({"copy", "--speed", "="}), ElementsAre("max", "min"));
    EXPECT_THAT(Complete({"copy", "--from=a"}), ElementsAre(FILES));
    EXPECT_THAT(Complete({"copy", "--unknown=a"}), IsEmpty());
}

TEST(Completion, OffersTheArgumentAtItsPlace) {
    EXPECT_THAT(Complete({"copy", "a"}), ElementsAre(FILES));
    EXPECT_THAT(Complete({"copy", "a", "gre"}), ElementsAre("green", "grey"));
    EXPECT_THAT(Complete({"copy", "--speed", "=", "max", "--json", "a", "gre"}),
                ElementsAre("green", "grey"));
    EXPECT_THAT(Complete({"copy", "-s", "max", "a", "red", ""}), ElementsAre("on", "off"));
    EXPECT_THAT(Complete({"copy", "a", "red", "on", ""}), IsEmpty());
    EXPECT_THAT(Complete({"item", "add", "red", "red", "r"}), ElementsAre("red"));
    EXPECT_THAT(Complete({"item", "count", ""}), IsEmpty());
}

TEST(Completion, OfTheToolsComesFromTheProgram) {
    ChildProcess simulator({BuiltProgram("javamw-sim"), "--complete", "call", "GetS"});
    EXPECT_EQ(simulator.WaitForExit(), 0);
    EXPECT_EQ(simulator.Output(), "GetSelection\n");
    ChildProcess platformctl({BuiltProgram("platformctl"), "--complete", "region", "u"});
    EXPECT_EQ(platformctl.WaitForExit(), 0);
    EXPECT_EQ(platformctl.Output(), "uruguay\n");
    ChildProcess headless({BuiltProgram("applist-headless"), "--complete", "--"});
    EXPECT_EQ(headless.WaitForExit(), 0);
    EXPECT_THAT(headless.Output(),
                AllOf(HasSubstr("--timeout\tTime limit"), HasSubstr("--version")));
}

/// Runs a script of a shell with the file of its completion and the words of a command line.
class Shells : public testing::Test {
protected:
    static std::string Script(const std::string& file) {
        const std::filesystem::path program = BuiltProgram("javamw-sim");
        return (program.parent_path().parent_path() / "share" / file).string();
    }
    static Words Ask(const Words& shell, const std::string& script, const std::string& file,
                     const Words& words) {
        Words command = shell;
        command.insert(command.end(), {script, Script(file)});
        command.insert(command.end(), words.begin(), words.end());
        const std::string path = std::filesystem::path(BuiltProgram("javamw-sim")).parent_path();
        ChildProcess process(command, {{"LC_ALL", "C.UTF-8"}, {"PATH", path + ":/usr/bin:/bin"}});
        EXPECT_EQ(process.WaitForExit(), 0) << process.Errors();
        EXPECT_EQ(process.Errors(), "");
        Words lines;
        std::istringstream stream(process.Output());
        for (std::string line; std::getline(stream, line);) {
            lines.push_back(line);
        }
        return lines;
    }
    static Words Bash(const std::string& program, const Words& words) {
        Words all{program};
        all.insert(all.end(), words.begin(), words.end());
        std::string function = program;
        std::replace(function.begin(), function.end(), '-', '_');
        return Ask({"bash", "--norc", "-c"},
                   R"(source "$0"; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _)" + function +
                       R"( "$1"; [[ $COMPREPLY ]] && printf '%s\n' "${COMPREPLY[@]}"; true)",
                   "bash-completion/completions/" + program, all);
    }
    static Words Fish(const std::string& program, const std::string& line) {
        return Ask({"fish", "--no-config", "-c"}, "source $argv[1]; complete -C $argv[2]",
                   "fish/vendor_completions.d/" + program + ".fish", {line});
    }
    static Words Zsh(const std::string& program, const Words& words) {
        Words all{program};
        all.insert(all.end(), words.begin(), words.end());
        return Ask({"zsh", "-fc"},
                   R"(_files() { print files }; compset() { : }
                      _describe() { print -rl -- "${candidates[@]}" }
                      source_it() { local file=$1; shift; local -a words=("$@")
                          local CURRENT=$#; source $file }
                      source_it "$0" "$@")",
                   "zsh/vendor-completions/_" + program, all);
    }
};

TEST_F(Shells, BashOffersWhatTheProgramPrints) {
    EXPECT_THAT(Bash("javamw-sim", {"se"}), ElementsAre("serve"));
    EXPECT_THAT(Bash("javamw-sim", {"replay", "--speed", "=", "m"}), ElementsAre("max"));
    EXPECT_THAT(Bash("platformctl", {"factory", ""}), ElementsAre("get", "set", "unset"));
    EXPECT_THAT(Bash("platformctl", {"set", "memory/javamw", ""}), ElementsAre("bool", "int"));
    EXPECT_THAT(Bash("javamw-sim", {"watch", ""}), IsEmpty());
}

TEST_F(Shells, BashOffersFiles) {
    const std::string file = Script("bash-completion/completions/javamw-s");
    const auto offered = ElementsAre(Script("bash-completion/completions/javamw-sim"));
    EXPECT_THAT(Bash("javamw-sim", {"run", file}), offered);
    EXPECT_THAT(Bash("javamw-sim", {"serve", "-i", file}), offered);
    EXPECT_THAT(Bash("applist-headless", {"--once", file}), offered);
    EXPECT_THAT(Bash("javamw-sim", {"serve", "--items", "=", file}), offered);
}

TEST_F(Shells, FishOffersWhatTheProgramPrintsWithDescriptions) {
    EXPECT_THAT(Fish("javamw-sim", "javamw-sim se"),
                ElementsAre("serve\tFill the list of each application that connects, then watch"));
    EXPECT_THAT(Fish("javamw-sim", "javamw-sim replay --speed="), ElementsAre("--speed=max"));
    EXPECT_THAT(Fish("platformctl", "platformctl factory "),
                IsSupersetOf({"get\tPrint a factory item", "set\tStore a factory item"}));
    const std::string file = Script("bash-completion/completions/javamw-s");
    EXPECT_THAT(Fish("javamw-sim", "javamw-sim serve --items=" + file),
                Contains(testing::StartsWith("--items=" + file)));
}

TEST_F(Shells, ZshOffersWhatTheProgramPrintsWithDescriptions) {
    EXPECT_THAT(Zsh("javamw-sim", {"wat"}),
                ElementsAre("watch:Print every event and the selection read after it"));
    EXPECT_THAT(Zsh("javamw-sim", {"run", "--c"}),
                ElementsAre("--check:Only check the files for errors"));
    EXPECT_THAT(Zsh("platformctl", {"region", "ur"}), ElementsAre("uruguay"));
    EXPECT_THAT(Zsh("javamw-sim", {"compare", "a", ""}), ElementsAre("files"));
}

}  // namespace
}  // namespace applist::tools
