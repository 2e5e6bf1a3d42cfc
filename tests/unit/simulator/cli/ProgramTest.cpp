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

TEST_F(Program, PrintsItsHelpAndItsVersion) {
    const Outcome help = RunSimulator({"--help"});
    EXPECT_EQ(help.status, SUCCESS);
    EXPECT_EQ(help.errors, "");
    EXPECT_THAT(help.output, HasSubstr("javamw-sim help COMMAND"));
    EXPECT_EQ(RunSimulator({"help"}).output, help.output);
    EXPECT_THAT(RunSimulator({"help", "call"}).output, HasSubstr("ModifyItem ID ID=NAME"));
    const Outcome version = RunSimulator({"--version"});
    EXPECT_EQ(version.status, SUCCESS);
    EXPECT_THAT(version.output, testing::MatchesRegex("javamw-sim [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

// How command lines are parsed is tested with the parser.
TEST_F(Program, RefusesWrongUsage) {
    ExpectRefused({"serv"}, "unknown command 'serv' (did you mean serve?); see javamw-sim --help");
    const auto refused = [](const std::vector<std::string>& arguments, const std::string& error) {
        ExpectRefused(arguments, error + "; see javamw-sim " + arguments.front() + " --help");
    };
    for (const char* command : {"watch", "serve", "shell"}) {
        refused({command, "a"}, command + std::string(" takes no arguments"));
    }
    for (const char* command : {"record", "replay", "applications"}) {
        refused({command}, command + std::string(" takes FILE"));
        refused({command, "a", "b"}, command + std::string(" takes FILE"));
    }
    refused({"run"}, "run takes FILE...");
    refused({"compare", "a"}, "compare takes FIRST SECOND");
    refused({"call"}, "call takes FUNCTION [ARG...]");
    refused({"call", "GetSelektion"},
            "unknown function 'GetSelektion' (did you mean GetSelection?)");
    refused({"call", "SetSelection"}, "SetSelection takes ID [NAME]");
    refused({"watch", "--items=x"}, "watch takes no option --items");
    refused({"serve", "--items=x", "--broadcast=y"}, "--items and --broadcast exclude each other");
    refused({"applications", "a", "--json", "--csv"}, "--json and --csv exclude each other");
    refused({"applications", "a", "--text=ebcdic"},
            "--text takes auto, dvb, isdb, arib or latin, not 'ebcdic'");
}

TEST_F(Program, RefusesValuesThatAreNotNumbers) {
    const auto refused = [](const std::vector<std::string>& arguments, const std::string& error) {
        ExpectRefused(arguments, error + "'; see javamw-sim " + arguments.front() + " --help");
    };
    refused({"watch", "--timeout=soon"}, "--timeout takes whole seconds, not 'soon");
    refused({"compare", "a", "b", "--tolerance=x"}, "--tolerance takes whole milliseconds, not 'x");
    refused({"replay", "a", "--wait=-1"}, "--wait takes whole seconds, not '-1");
    refused({"replay", "a", "--conversation="}, "--conversation takes a whole number, not '");
    for (const std::string speed : {"0", "-1", "fast", "1x", "inf", "nan", ""}) {
        refused({"replay", "a", "--speed=" + speed},
                "--speed takes a number above 0 or max, not '" + speed);
    }
}

TEST_F(Program, ReportsThatItCannotReachTheBus) {
    const std::string recording = File(
        "{\"javamw-recording\":1}\n"
        R"({"us":1,"kind":"call","side":"middleware","from":":1.1",)"
        R"("to":":1.2","call":1,"bytes":"d1070000"})");
    for (const std::vector<std::string>& command : {std::vector<std::string>{"watch"},
                                                    {"serve"},
                                                    {"call", "GetAllItems"},
                                                    {"shell"},
                                                    {"record", Path("new")},
                                                    {"replay", recording}}) {
        std::vector<std::string> arguments = command;
        arguments.push_back(NO_BUS_THERE);
        const Outcome outcome = RunSimulator(arguments);
        EXPECT_EQ(outcome.status, NO_BUS) << command.front();
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

TEST_F(Program, RefusesToReadStandardInputTwice) {
    ExpectRefused({"run", "-", "a", "-"},
                  "arguments 1 and 3 are both standard input; see javamw-sim run --help");
    ExpectRefused({"compare", "-", "-"},
                  "arguments 1 and 2 are both standard input; see javamw-sim compare --help");
    ExpectRefused({"serve", "--items=-", "--broadcast=-"},
                  "--items and --broadcast exclude each other; see javamw-sim serve --help");
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

TEST_F(Program, ComparesTimesWithinATolerance) {
    const auto recorded = [this](const std::string& name, const std::string& fields) {
        std::ofstream(Path(name)) << "{\"javamw-recording\":1}\n"
                                  << R"({"kind":"left","side":"application",)" << fields << "}";
        return Path(name);
    };
    const std::string first = recorded("first", R"("us":1000,"from":":1.2")");
    const std::string second = recorded("second", R"("us":9000,"from":":1.3")");
    const auto compare = [&](const std::vector<std::string>& options) {
        std::vector<std::string> arguments{"compare", first, second};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const Outcome outcome = RunSimulator(arguments);
        return std::to_string(outcome.status) + ' ' + outcome.output;
    };
    EXPECT_EQ(compare({}), "0 no difference in 1 steps\n");
    EXPECT_EQ(compare({"--json"}), "0 ");
    EXPECT_EQ(compare({"--tolerance=8"}), "0 no difference in 1 steps\n");
    EXPECT_EQ(compare({"--tolerance=7"}),
              "1 - " + first + ":2: application left the bus, after 1 ms\n+ " + second +
                  ":2: application left the bus, after 9 ms\n1 difference\n");
    EXPECT_THAT(compare({"--names"}), StartsWith("1 "));
    ExpectRefused({"compare", first, "/nonexistent"}, "/nonexistent: no such file");
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
