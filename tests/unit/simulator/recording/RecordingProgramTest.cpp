// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/Simulator.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

/// Command lines of record, replay, compare and shell, without a bus.
class RecordingProgram : public testing::Test {
protected:
    int Run(const std::vector<std::string>& arguments) {
        const Outcome outcome =
            RunSimulator(arguments, {{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/system"}});
        m_output = outcome.output;
        m_errors = outcome.errors;
        return outcome.status;
    }

    void ExpectRefused(const std::vector<std::string>& arguments, const std::string& error) {
        EXPECT_EQ(Run(arguments), WRONG_USAGE);
        EXPECT_EQ(m_errors,
                  "javamw-sim: " + error + "; see javamw-sim " + arguments.front() + " --help\n");
        EXPECT_EQ(m_output, "");
    }

    std::string File(const std::string& name, const std::string& content) {
        const std::string path = (m_folder.path() / name).string();
        std::ofstream(path, std::ios::binary) << "{\"javamw-recording\":1}\n" << content;
        return path;
    }

    TemporaryDir m_folder;
    std::string m_output;
    std::string m_errors;
};

TEST_F(RecordingProgram, PrintsItsHelp) {
    for (const char* command : {"record", "replay", "compare", "shell"}) {
        EXPECT_EQ(Run({command, "--help"}), SUCCESS);
        EXPECT_THAT(m_output, StartsWith(std::string("Usage: javamw-sim ") + command));
        EXPECT_THAT(m_output, HasSubstr("Examples:\n"));
    }
}

TEST_F(RecordingProgram, RefusesWrongUsage) {
    ExpectRefused({"record"}, "record takes FILE");
    ExpectRefused({"record", "a", "b"}, "record takes FILE");
    ExpectRefused({"compare", "a"}, "compare takes FIRST SECOND");
    ExpectRefused({"compare", "a", "b", "--tolerance=x"},
                  "--tolerance takes whole milliseconds, not 'x'");
    ExpectRefused({"replay"}, "replay takes FILE");
    ExpectRefused({"replay", "a", "--wait=-1"}, "--wait takes whole seconds, not '-1'");
    ExpectRefused({"replay", "a", "--conversation="},
                  "--conversation takes a whole number, not ''");
    for (const char* speed : {"0", "-1", "fast", "1x", "inf", "nan", ""}) {
        ExpectRefused({"replay", "a", std::string("--speed=") + speed},
                      std::string("--speed takes a number above 0 or max, not '") + speed + "'");
    }
    ExpectRefused({"shell", "a"}, "shell takes no arguments");
}

TEST_F(RecordingProgram, ReportsThatItCannotReachTheBus) {
    const std::string file = File("a", R"({"us":1,"kind":"call","side":"middleware","from":":1.1",)"
                                       R"("to":":1.2","call":1,"bytes":"d1070000"})");
    EXPECT_EQ(Run({"record", (m_folder.path() / "new").string()}), NO_BUS);
    EXPECT_THAT(m_errors, StartsWith("javamw-sim: cannot reach the bus: "));
    EXPECT_EQ(Run({"replay", file}), NO_BUS);
    EXPECT_EQ(Run({"shell"}), NO_BUS);
    EXPECT_THAT(m_errors, StartsWith("javamw-sim: cannot reach the bus: "));
}

TEST_F(RecordingProgram, ComparesTimesWithinATolerance) {
    const std::string early = R"({"us":1000,"kind":"left","side":"application","from":":1.2"})";
    const std::string late = R"({"us":9000,"kind":"left","side":"application","from":":1.3"})";
    const std::string first = File("first", early);
    const std::string second = File("second", late);
    EXPECT_EQ(Run({"compare", first, second}), SUCCESS);
    EXPECT_EQ(m_output, "no difference in 1 steps\n");
    EXPECT_EQ(Run({"compare", "--json", first, second}), SUCCESS);
    EXPECT_EQ(m_output, "");
    EXPECT_EQ(Run({"compare", "--tolerance=8", first, second}), SUCCESS);
    EXPECT_EQ(Run({"compare", "--tolerance=7", first, second}), FAILED);
    EXPECT_EQ(m_output, "- " + first + ":2: application left the bus, after 1 ms\n+ " + second +
                            ":2: application left the bus, after 9 ms\n1 difference\n");
    EXPECT_EQ(Run({"compare", "--names", first, second}), FAILED);
    EXPECT_EQ(Run({"compare", first, "/nonexistent"}), WRONG_USAGE);
    EXPECT_EQ(m_errors, "javamw-sim: /nonexistent: no such file\n");
}

}  // namespace
}  // namespace applist::test
