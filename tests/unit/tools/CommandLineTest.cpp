// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "shared/CommandLine.h"

namespace applist::tools {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::TestWithParam;

using Words = std::vector<std::string>;

struct Outcome {
    int status = -1;
    std::string output;
    std::string errors;
};

/// Runs a program whose commands return 7 and keep what they were given.
class CommandLine : public testing::Test {
protected:
    CommandLine() { s_given = {}; }

    Outcome Run(const Words& words) { return Run(PROGRAM, words); }
    static Outcome Run(const Program& program, const Words& words) {
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        const int status = RunProgram(program, words);
        return {status, testing::internal::GetCapturedStdout(),
                testing::internal::GetCapturedStderr()};
    }
    void ExpectTaken(const Words& words) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, 7);
        EXPECT_EQ(outcome.errors, "");
    }
    void ExpectRefused(const Words& words, const std::string& error) {
        const Outcome outcome = Run(words);
        EXPECT_EQ(outcome.status, WRONG_USAGE_STATUS);
        EXPECT_EQ(outcome.output, "");
        EXPECT_EQ(outcome.errors, "tool: " + error + "\n");
    }

    static int Keep(const Arguments& given) {
        s_given = given;
        return 7;
    }

    const Program PROGRAM{
        .name = "tool",
        .version = "1.2",
        .purpose = "Does things.\n",
        .options = {{"json", 'j', "", "Print JSON"}},
        .commands = {{"copy", "FROM TO", "Copy", {{"speed", 's', "N", "Speed"}}, "", &Keep},
                     {"list", "[FOLDER]", "List", {{"all", 'a', "", "All"}}, "", &Keep},
                     {"item add", "ID...", "Add", {}, "", &Keep},
                     {"item count", "", "Count", {}, "", &Keep}},
        .exitCodes = "Exit status: 0\n",
        .values = {}};
    static inline Arguments s_given;
};

TEST_F(CommandLine, TakesOptionsAnywhere) {
    for (const Words& words : {Words{"--json", "copy", "a", "b"},
                               {"copy", "--json", "a", "b"},
                               {"copy", "a", "b", "-j"}}) {
        ExpectTaken(words);
        EXPECT_TRUE(s_given.Has("json"));
        EXPECT_THAT(s_given.words(), ElementsAre("a", "b"));
    }
}

TEST_F(CommandLine, TakesValuesInEveryForm) {
    for (const Words& words : {Words{"copy", "a", "b", "--speed", "5"},
                               {"copy", "a", "b", "--speed=5"},
                               {"copy", "-s", "5", "a", "b"},
                               {"copy", "-js5", "a", "b"},
                               {"-s5", "copy", "a", "b"}}) {
        ExpectTaken(words);
        EXPECT_EQ(s_given.Value("speed", "1"), "5");
    }
    ExpectTaken({"copy", "a", "b", "--speed="});
    EXPECT_EQ(s_given.Value("speed", "1"), "");
    ExpectTaken({"copy", "a", "b"});
    EXPECT_EQ(s_given.Value("speed", "1"), "1");
}

TEST_F(CommandLine, TakesTheLastOfRepeatedValuesOrAll) {
    ExpectTaken({"copy", "--speed=1", "a", "b", "--speed", "-2"});
    EXPECT_EQ(s_given.Value("speed"), "-2");
    EXPECT_THAT(s_given.Values("speed"), ElementsAre("1", "-2"));
}

TEST_F(CommandLine, TakesNegativeNumbersAndADashAsArguments) {
    ExpectTaken({"copy", "-5", "-"});
    EXPECT_THAT(s_given.words(), ElementsAre("-5", "-"));
}

TEST_F(CommandLine, TakesNoOptionAfterTwoDashes) {
    ExpectTaken({"item", "add", "--", "--json", "--", "-h"});
    EXPECT_THAT(s_given.words(), ElementsAre("--json", "--", "-h"));
    EXPECT_THAT(s_given.options(), IsEmpty());
}

TEST_F(CommandLine, ChecksTheNumberOfArguments) {
    for (const Words& words :
         {Words{"list"}, {"list", "a"}, {"item", "add", "a"}, {"item", "add", "a", "b", "c"}}) {
        ExpectTaken(words);
    }
    ExpectRefused({"copy", "a"}, "copy takes FROM TO; see tool copy --help");
    ExpectRefused({"copy", "a", "b", "c"}, "copy takes FROM TO; see tool copy --help");
    ExpectRefused({"list", "a", "b"}, "list takes [FOLDER]; see tool list --help");
    ExpectRefused({"item", "add"}, "item add takes ID...; see tool item add --help");
    ExpectRefused({"item", "count", "a"},
                  "item count takes no arguments; see tool item count --help");
}

TEST_F(CommandLine, NamesTheWrongOptionAndTheHelpOfItsCommand) {
    ExpectRefused({"--jsno"}, "unknown option --jsno; see tool --help");
    ExpectRefused({"copy", "--jsno=x"}, "unknown option --jsno; see tool copy --help");
    ExpectRefused({"--jsno", "item", "add"}, "unknown option --jsno; see tool item add --help");
    ExpectRefused({"list", "-aq"}, "unknown option -q; see tool list --help");
    ExpectRefused({"list", "--all=yes"}, "--all takes no value; see tool list --help");
    ExpectRefused({"copy", "--speed"}, "missing argument for --speed; see tool copy --help");
    ExpectRefused({"copy", "-js"}, "missing argument for --speed; see tool copy --help");
    ExpectRefused({"list", "--speed=1"}, "list takes no option --speed; see tool list --help");
}

TEST_F(CommandLine, NamesTheUnknownCommand) {
    ExpectRefused({}, "no command; see tool --help");
    ExpectRefused({"items"}, "unknown command 'items'; see tool --help");
    ExpectRefused({"item"}, "'item' must be followed by one of: add, count; see tool --help");
    ExpectRefused({"kopy", "a"}, "unknown command 'kopy' (did you mean copy?); see tool --help");
}

TEST_F(CommandLine, PrintsHelpAndVersionWithoutRunningTheCommand) {
    EXPECT_EQ(Run({"copy", "--version"}).output, "tool 1.2\n");
    EXPECT_EQ(Run({"help"}).output, Run({"-h"}).output);
    EXPECT_EQ(Run({"help", "item", "add"}).output, Run({"item", "add", "--help"}).output);
    EXPECT_EQ(Run({"item", "add", "-h"}).output,
              "Usage: tool item add [OPTION...] ID...\n\nAdd.\n\nOptions:\n"
              "  -j, --json  Print JSON\n  -h, --help  Print the help\n\nExit status: 0\n");
    EXPECT_EQ(Run({"help"}).status, 0);
}

TEST_F(CommandLine, NeedsNoCommandIfTheProgramHasOne) {
    const Program program{.name = "show",
                          .version = "1.2",
                          .purpose = "",
                          .options = {{"json", 'j', "", "Print JSON"}},
                          .commands = {{"", "[FILE]", "Show a file", {}, "", &Keep}},
                          .exitCodes = "Exit status: 0\n",
                          .values = {}};
    EXPECT_EQ(Run(program, {}).status, 7);
    EXPECT_EQ(Run(program, {"-j", "help"}).status, 7);
    EXPECT_THAT(s_given.words(), ElementsAre("help"));
    EXPECT_EQ(Run(program, {"help"}).status, 7);
    EXPECT_EQ(Run(program, {"a", "b"}).errors, "show: show takes [FILE]; see show --help\n");
    EXPECT_EQ(Run(program, {"a", "-x"}).errors, "show: unknown option -x; see show --help\n");
    EXPECT_EQ(Run(program, {"--help"}).output,
              "Usage: show [OPTION...] [FILE]\n\nShow a file.\n\nOptions:\n"
              "  -j, --json     Print JSON\n  -h, --help     Print the help\n"
              "      --version  Print the version\n\nExit status: 0\n");
}

}  // namespace
}  // namespace applist::tools
