// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/Simulator.h"
#include "support/TemporaryDir.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

void ExpectRefused(const std::vector<std::string>& arguments, const std::string& error) {
    const Outcome outcome = RunSimulator(arguments);
    EXPECT_EQ(outcome.status, WRONG_USAGE);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "javamw-sim: " + error + "\n");
}

class Program : public testing::Test {
protected:
    std::string File(const std::string& content) {
        const std::string path = Path("input");
        std::ofstream(path, std::ios::binary) << content;
        return path;
    }
    std::string Path(const std::string& name) { return (m_folder.path() / name).string(); }

private:
    TemporaryDir m_folder;
};

TEST_F(Program, ExplainsItsCommandsAndExitCodes) {
    const Outcome outcome = RunSimulator({"--help"});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_EQ(outcome.errors, "");
    for (const char* text : {"serve", "watch", "call", "--help", "--version", "Exit status:", "0  ",
                             "1  ", "2  ", "3  ", "4  "}) {
        EXPECT_THAT(outcome.output, HasSubstr(text));
    }
}

TEST_F(Program, ExplainsTheOptionsOfEachCommand) {
    const std::string serve = RunSimulator({"serve", "--help"}).output;
    EXPECT_THAT(serve, HasSubstr("-i, --items=FILE"));
    EXPECT_THAT(serve, HasSubstr("-a, --address=ADDRESS"));
    EXPECT_THAT(serve, HasSubstr("Examples:"));
    const std::string call = RunSimulator({"--help", "call"}).output;
    EXPECT_THAT(call, HasSubstr("ModifyItem ID ID=NAME"));
    EXPECT_THAT(call, Not(HasSubstr("--items")));
}

TEST_F(Program, PrintsItsVersion) {
    const Outcome outcome = RunSimulator({"--version"});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_THAT(outcome.output, testing::MatchesRegex("javamw-sim [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST_F(Program, RefusesWrongUsage) {
    const std::string hint = "; see javamw-sim --help";
    ExpectRefused({}, "no command" + hint);
    ExpectRefused({"dance"}, "unknown command 'dance'" + hint);
    ExpectRefused({"--loud"}, "unknown option --loud" + hint);
}

TEST_F(Program, PointsToTheHelpOfTheCommandWhoseOptionIsWrong) {
    ExpectRefused({"watch", "--loud"}, "unknown option --loud; see javamw-sim watch --help");
    ExpectRefused({"--loud", "watch"}, "unknown option --loud; see javamw-sim watch --help");
    ExpectRefused({"serve", "--items"},
                  "missing argument for --items; see javamw-sim serve --help");
}

TEST_F(Program, SuggestsTheWordThatWasProbablyMeant) {
    ExpectRefused({"serv"}, "unknown command 'serv' (did you mean serve?); see javamw-sim --help");
    ExpectRefused(
        {"call", "additems"},
        "unknown function 'additems' (did you mean AddItems?); see javamw-sim call --help");
    ExpectRefused({"call", "GetSelektion"},
                  "unknown function 'GetSelektion' (did you mean GetSelection?); "
                  "see javamw-sim call --help");
}

TEST_F(Program, TakesHelpAsACommand) {
    EXPECT_EQ(RunSimulator({"help"}).output, RunSimulator({"--help"}).output);
    EXPECT_EQ(RunSimulator({"help", "serve"}).output, RunSimulator({"serve", "--help"}).output);
    EXPECT_EQ(RunSimulator({"help", "serve"}).status, SUCCESS);
    EXPECT_THAT(RunSimulator({"--help"}).output, HasSubstr("javamw-sim help COMMAND"));
}

TEST_F(Program, RefusesOptionsAndArgumentsOfOtherCommands) {
    const auto hint = [](const std::string& command) {
        return "; see javamw-sim " + command + " --help";
    };
    ExpectRefused({"watch", "it"}, "watch takes no arguments" + hint("watch"));
    ExpectRefused({"serve", "list.txt"}, "serve takes no arguments" + hint("serve"));
    ExpectRefused({"call"}, "call takes FUNCTION [ARG...]" + hint("call"));
    ExpectRefused({"call", "Dance"}, "unknown function 'Dance'" + hint("call"));
    ExpectRefused({"call", "SetSelection"}, "SetSelection takes ID [NAME]" + hint("call"));
    ExpectRefused({"call", "GetAllItems", "x"}, "GetAllItems takes no arguments" + hint("call"));
    ExpectRefused({"--items", "x", "watch"}, "watch takes no option --items" + hint("watch"));
    ExpectRefused({"serve", "--items=x", "--broadcast=y"},
                  "--items and --broadcast exclude each other" + hint("serve"));
    ExpectRefused({"watch", "--timeout=-1"},
                  "--timeout takes whole seconds, not '-1'" + hint("watch"));
}

TEST_F(Program, RefusesATimeoutThatIsNotANumber) {
    ExpectRefused({"watch", "--timeout=soon"},
                  "--timeout takes whole seconds, not 'soon'; see javamw-sim watch --help");
}

TEST_F(Program, ReportsThatItCannotReachTheBus) {
    for (const std::vector<std::string>& command :
         {std::vector<std::string>{"watch"}, {"serve"}, {"call", "GetAllItems"}}) {
        std::vector<std::string> arguments = command;
        arguments.push_back(NO_BUS_THERE);
        const Outcome outcome = RunSimulator(arguments);
        EXPECT_EQ(outcome.status, NO_BUS);
        EXPECT_THAT(outcome.errors, StartsWith("javamw-sim: cannot reach the bus: "));
        EXPECT_THAT(outcome.errors, HasSubstr("/nonexistent/bus"));
    }
}

TEST_F(Program, TakesTheSystemBusWithoutAnAddress) {
    ChildProcess program({BuiltProgram("javamw-sim"), "watch"},
                         {{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system"}});
    EXPECT_EQ(program.WaitForExit(), NO_BUS);
    EXPECT_THAT(program.Errors(), HasSubstr("/nonexistent/system"));
}

TEST_F(Program, TakesArgumentsThatLookLikeOptionsAfterADoubleDash) {
    EXPECT_EQ(RunSimulator({NO_BUS_THERE, "call", "--", "SetSelection", "--loud"}).status, NO_BUS);
}

TEST_F(Program, TakesNamesInAnyBytesWhateverTheLocale) {
    EXPECT_EQ(RunSimulator({NO_BUS_THERE, "call", "AddItems", "w1=Citt\u00e0", "x=\xE8"}).status,
              NO_BUS);
}

TEST_F(Program, RefusesAnItemFileWithFileAndLine) {
    const std::string file = File("w1\tWeather\nnews\n");
    ExpectRefused({"serve", NO_BUS_THERE, "--items", file},
                  file + ":2: no tab between id and name");
}

TEST_F(Program, ReadsInputFromAPipe) {
    for (const char* input : {"-", "/dev/stdin", "/dev/fd/0"}) {
        ChildProcess program({"sh", "-c",
                              "printf 'w1\\tWeather\\n' | " + BuiltProgram("javamw-sim") +
                                  " serve " + NO_BUS_THERE + " --items " + input});
        EXPECT_EQ(program.WaitForExit(), NO_BUS) << input << program.Errors();
    }
}

TEST_F(Program, RefusesFilesThatCannotBeRead) {
    ExpectRefused({"serve", NO_BUS_THERE, "--items", Path("none")},
                  Path("none") + ": no such file");
    ExpectRefused({"serve", NO_BUS_THERE, "--broadcast", Path("none")},
                  Path("none") + ": no such file");
    const Outcome outcome = RunSimulator({"serve", NO_BUS_THERE, "--items", Path("")});
    EXPECT_EQ(outcome.status, WRONG_USAGE);
    EXPECT_THAT(outcome.errors, StartsWith("javamw-sim: " + Path("") + ": "));
}

TEST_F(Program, RefusesAFileThatIsNotABroadcast) {
    const std::string none =
        ": neither a transport stream with services nor sections nor XML of applications";
    const std::string file = File(std::string(1000, 'x'));
    ExpectRefused({"serve", NO_BUS_THERE, "--broadcast", file},
                  file + none + "\njavamw-sim: " + file + ": lost sync at byte 0\njavamw-sim: " +
                      file + ": skipped damaged parts: 1 in packets (1 lost sync)");
    const std::string empty = File("");
    ExpectRefused({"serve", NO_BUS_THERE, "--broadcast", empty}, empty + none);
}

std::string Broadcast(uint8_t visibility) {
    TsGenerator generator;
    generator.Add(0, TsAssociation({{1, 0x0200}}));
    generator.Add(0x0200, TsMap(1, {0x0300}));
    generator.Add(0x0300, TsApplications({{11, 1, 2, visibility, {{"ita", "Notizie"}}}}));
    return {generator.stream().begin(), generator.stream().end()};
}

TEST_F(Program, RefusesABroadcastWithoutApplications) {
    const std::string file = File(Broadcast(1));
    ExpectRefused({"serve", NO_BUS_THERE, "--broadcast", file}, file + ": offers no applications");
}

TEST_F(Program, ReportsDamageAndContinues) {
    std::string broken = Broadcast(3);
    broken.back() = 'x';  // Stuffing; only the packet after it is missing.
    broken += "G";
    const std::string file = File(broken);
    const Outcome outcome = RunSimulator({"serve", NO_BUS_THERE, "--broadcast", file});
    EXPECT_EQ(outcome.status, NO_BUS);
    EXPECT_THAT(outcome.errors,
                StartsWith("javamw-sim: " + file + ": lost sync at byte 564\njavamw-sim: " + file +
                           ": skipped damaged parts: 1 in packets (1 lost sync)\n"));
}

}  // namespace
}  // namespace applist::test
