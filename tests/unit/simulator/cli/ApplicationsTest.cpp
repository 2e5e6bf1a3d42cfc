// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "support/AitXml.h"
#include "support/Simulator.h"
#include "support/TemporaryDir.h"
#include "support/TsGenerator.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

const std::string HEAD =
    "service,organisation_id,application_id,type,control,visibility,priority,name,names,location,"
    "profiles,service_bound,usage,boundaries,ratings,transports\r\n";

/// Files with one service "Rete 1" of number 5, whose application has two names.
class Applications : public testing::Test {
protected:
    std::string Write(const std::string& name, const TsBytes& content) {
        const std::string path = (m_folder.path() / name).string();
        std::ofstream(path, std::ios::binary)
            .write(reinterpret_cast<const char*>(content.data()),
                   static_cast<std::streamsize>(content.size()));
        return path;
    }

    static TsBytes Table() {
        return TsApplications({{11, 1, 2, 3, {{"eng", "News"}, {"ita", "Notizie"}}},
                               {11, 2, 4, 1, {{"eng", "Engine"}}}},
                              0x0010);
    }

    static TsBytes Stream() {
        TsGenerator generator;
        generator.Add(0, TsAssociation({{5, 0x0200}}));
        generator.Add(0x0011, TsDescription({{5, "Rete 1"}}));
        generator.Add(0x0200, TsMap(5, {0x0300}));
        generator.Add(0x0300, Table());
        return generator.stream();
    }

private:
    TemporaryDir m_folder;
};

const std::string NEWS_LINE =
    "11,1,16,PRESENT,3,1,News,\"{\"\"eng\"\":\"\"News\"\",\"\"ita\"\":\"\"Notizie\"\"}\",,"
    "1/1.0.0,no,,,,\r\n";
const std::string ENGINE_LINE =
    "11,2,16,KILL,1,1,Engine,\"{\"\"eng\"\":\"\"Engine\"\"}\",,1/1.0.0,no,,,,\r\n";

TEST_F(Applications, AreAllListedOfferedOrNot) {
    const Outcome outcome = RunSimulator({"applications", "--csv", Write("a.ts", Stream())});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, HEAD + "5," + NEWS_LINE + "5," + ENGINE_LINE);
}

TEST_F(Applications, AreFoundInSectionsByTheNameOrTheContentOfTheFile) {
    for (const char* name : {"a.sec", "a.SEC", "a.bin"}) {
        const Outcome outcome = RunSimulator({"applications", "--csv", Write(name, Table())});
        EXPECT_EQ(outcome.status, SUCCESS);
        EXPECT_EQ(outcome.output, HEAD + "," + NEWS_LINE + "," + ENGINE_LINE);
    }
}

TEST_F(Applications, AreFoundInXml) {
    const std::string document = AitXml({{"11", "1", XmlName("eng", "News")}});
    const Outcome outcome = RunSimulator(
        {"applications", "--csv", Write("a", TsBytes(document.begin(), document.end()))});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_EQ(outcome.output, HEAD +
                                  ",11,1,16,AUTOSTART,3,1,News,\"{\"\"eng\"\":\"\"News\"\"}\","
                                  "http://a.example/index.html,,no,,,,HTTP\r\n");
}

TEST_F(Applications, AreRefusedInXmlThatIsDamaged) {
    const std::string file = Write("a.xml", TsBytes{'<', 'a', '>'});
    const Outcome outcome = RunSimulator({"applications", file});
    EXPECT_EQ(outcome.status, WRONG_USAGE);
    EXPECT_THAT(outcome.errors, StartsWith("javamw-sim: " + file + ": line 1: "));
}

TEST_F(Applications, ArePrintedInTheFormatAskedFor) {
    const std::string file = Write("a.ts", Stream());
    const std::string table = RunSimulator({"applications", file}).output;
    EXPECT_THAT(table, StartsWith("SERVICE  ORGANISATION_ID  APPLICATION_ID  TYPE "));
    EXPECT_THAT(table, HasSubstr("HbbTV  PRESENT  3           1         News    eng=News; "
                                 "ita=Notizie  -         1/1.0.0   no "));
    EXPECT_THAT(RunSimulator({"applications", "--why", file}).output,
                EndsWith("  not offered: control code KILL, visible to other applications only\n"));
    const std::string json = RunSimulator({"applications", "--json", file}).output;
    EXPECT_THAT(json, StartsWith("[\n  {\n    \"service\": 5,\n"));
    EXPECT_THAT(json, EndsWith("  }\n]\n"));
}

TEST_F(Applications, HaveNamesInTheLanguageAskedForOrTheLocales) {
    const std::string file = Write("a.ts", Stream());
    const std::string italian = ",1,Notizie,";
    EXPECT_THAT(RunSimulator({"applications", "--csv", file}, {{"LC_ALL", "it_IT.UTF-8"}}).output,
                HasSubstr(italian));
    EXPECT_THAT(RunSimulator({"applications", "--csv", "--language=de,it", file}).output,
                HasSubstr(italian));
    EXPECT_THAT(
        RunSimulator({"applications", "--csv", "-l", "eng", file}, {{"LC_ALL", "it_IT.UTF-8"}})
            .output,
        HasSubstr(",1,News,"));
}

TEST_F(Applications, AreThoseOfTheServicesAskedFor) {
    const std::string file = Write("a.ts", Stream());
    for (const char* service : {"5", "0x5", "rete 1"}) {
        EXPECT_THAT(RunSimulator({"applications", "--csv", "--service", service, file}).output,
                    HasSubstr("News"));
    }
    const Outcome outcome = RunSimulator({"applications", "-s", "6", file});
    EXPECT_EQ(outcome.status, WRONG_USAGE);
    EXPECT_EQ(outcome.errors, "javamw-sim: " + file + ": no service '6'; it has 5 (Rete 1)\n");
}

TEST_F(Applications, AreAnEmptyListForAStreamWithoutAny) {
    TsGenerator generator;
    generator.Add(0, TsAssociation({{5, 0x0200}}));
    const std::string file = Write("a.ts", generator.stream());
    const Outcome outcome = RunSimulator({"applications", "--json", file});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_EQ(outcome.output, "[]\n");
    EXPECT_EQ(RunSimulator({"applications", "--csv", file}).output, HEAD);
}

TEST_F(Applications, AreListedFromADamagedStreamWithThePlacesOfTheDamage) {
    TsBytes stream = Stream();
    const TsBytes more = Stream();
    stream.insert(stream.end(), more.begin(), more.end());
    stream[188 * 4] = 0;
    const std::string file = Write("a.ts", stream);
    const Outcome outcome = RunSimulator({"applications", "--csv", file});
    EXPECT_EQ(outcome.status, SUCCESS);
    EXPECT_EQ(outcome.output, HEAD + "5," + NEWS_LINE + "5," + ENGINE_LINE);
    const std::string prefix = "javamw-sim: " + file + ": ";
    EXPECT_EQ(outcome.errors, prefix + "lost sync at byte 752\n" + prefix +
                                  "gap at byte 940 on PID 0x0011\n" + prefix +
                                  "gap at byte 1128 on PID 0x0200\n" + prefix +
                                  "gap at byte 1316 on PID 0x0300\n" + prefix +
                                  "skipped damaged parts: 4 in packets (1 lost sync, 3 gaps)\n");
}

TEST_F(Applications, SayWhenTheirOutputCannotBeWritten) {
    const std::string file = Write("a.ts", Stream());
    ChildProcess program({"/bin/sh", "-c", "exec \"$0\" applications \"$1\" >/dev/full",
                          BuiltProgram("javamw-sim"), file});
    EXPECT_EQ(program.WaitForExit(), FAILED);
    EXPECT_EQ(program.Errors(), "javamw-sim: standard output: No space left on device\n");
}

TEST_F(Applications, NameAnEmptyFileName) {
    EXPECT_EQ(RunSimulator({"applications", ""}).errors, "javamw-sim: '': no such file\n");
}

TEST_F(Applications, AreServedAsTheOptionsSay) {
    const std::string file = Write("a.ts", Stream());
    const auto serve = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"serve", NO_BUS_THERE});
        return RunSimulator(arguments);
    };
    EXPECT_EQ(serve({"-b", file, "-s", "5", "-l", "ita", "--all", "--interval=0.5"}).status,
              NO_BUS);
    EXPECT_THAT(serve({"-b", file, "-s", "6"}).errors, HasSubstr("no service '6'"));
    const std::string hint = "; see javamw-sim serve --help\n";
    for (const char* option :
         {"--service=5", "--language=ita", "--text=dvb", "--all", "--interval=1"}) {
        const Outcome outcome = serve({option});
        EXPECT_EQ(outcome.status, WRONG_USAGE);
        EXPECT_THAT(outcome.errors, HasSubstr(" needs --broadcast" + hint));
    }
    for (const char* interval : {"-1", "soon", "", "nan", "inf", "1s"}) {
        EXPECT_EQ(
            serve({"-b", file, std::string("--interval=") + interval}).errors,
            std::string("javamw-sim: --interval takes seconds, not '") + interval + "'" + hint);
    }
}

}  // namespace
}  // namespace applist::test
