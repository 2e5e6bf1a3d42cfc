// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <filesystem>

#include <gmock/gmock.h>

#include "e2e/visibility/Platformctl.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(Platformctl, SetsGetsAndUnsets) {
    Do({"set", AUTORUN, "bool", "true"});
    Do({"set", DATA_SERVICE, "int", "2"});
    Do({"set", AUTOSTART, "int", "-5"});
    EXPECT_EQ(Get(AUTORUN), "true\n");
    EXPECT_EQ(Get(DATA_SERVICE), "2\n");
    EXPECT_EQ(Get(AUTOSTART), "-5\n");
    Do({"unset", DATA_SERVICE});
    const auto result = Run({"get", DATA_SERVICE});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "platformctl: " + DATA_SERVICE + " is not set\n");
    EXPECT_EQ(Get(AUTOSTART), "-5\n");
}

TEST_F(Platformctl, TakesBothSpellingsOfABool) {
    for (const auto& [word, printed] :
         {std::pair{"1", "true\n"}, {"false", "false\n"}, {"true", "true\n"}, {"0", "false\n"}}) {
        Do({"set", AUTORUN, "bool", word});
        EXPECT_EQ(Get(AUTORUN), printed);
    }
}

TEST_F(Platformctl, SetsFactoryItems) {
    Do({"factory", "set", "194", "-2147483648"});
    EXPECT_EQ(Run({"factory", "get", "194"}).output, "-2147483648\n");
    EXPECT_EQ(
        Run({"factory", "get", "194", "--json"}).output,
        "{\n  \"name\": \"factory 194\",\n  \"type\": \"int\",\n  \"value\": -2147483648\n}\n");
    Do({"factory", "unset", "194"});
    const auto result = Run({"factory", "get", "194"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "platformctl: factory item 194 is not set\n");
}

TEST_F(Platformctl, ListsWhatIsKnown) {
    Do({"set", DATA_SERVICE, "int", "2"});
    Do({"set", AUTORUN, "bool", "false"});
    Do({"region", "uruguay"});
    const auto result = Run({"list"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, AUTORUN + "\tbool\tfalse\n" + DATA_SERVICE + "\tint\t2\n" + AUTOSTART +
                                 "\tint\tnot set\n" + HIGH_CONTRAST + "\tbool\tnot set\n" +
                                 TEXT_SIZE + "\tint\tnot set\n" + REDUCED_MOTION +
                                 "\tbool\tnot set\n" + SPEECH +
                                 "\tbool\tnot set\nfactory 194\tint\t85\n");
    EXPECT_EQ(result.errors, "");
}

TEST_F(Platformctl, PrintsJson) {
    Do({"set", AUTORUN, "bool", "true"});
    EXPECT_EQ(Run({"get", AUTORUN, "--json"}).output,
              "{\n  \"name\": \"" + AUTORUN + "\",\n  \"type\": \"bool\",\n  \"value\": true\n}\n");
    const auto list = Run({"--json", "list"}).output;
    EXPECT_THAT(list, StartsWith("{\n  \"data\": [\n"));
    EXPECT_THAT(list, HasSubstr("\"name\": \"" + DATA_SERVICE +
                                "\",\n      \"type\": \"int\",\n      \"value\": null\n"));
}

TEST_F(Platformctl, PrintsTheKeysInEffect) {
    EXPECT_THAT(Run({"keys"}).output, HasSubstr("Escape\tXF86Back\nF10\tXF86Exit\n"));
    m_root.Write("keys.ini", "F9=XF86Exit\n");
    const auto keys = Run({"keys"});
    EXPECT_EQ(keys.status, 0) << keys.errors;
    EXPECT_THAT(keys.output, HasSubstr("F10\tXF86Exit\nF9\tXF86Exit\n"));
    EXPECT_THAT(Run({"keys", "--json"}).output,
                HasSubstr("\"key\": \"F9\",\n      \"name\": \"XF86Exit\"\n"));
}

TEST_F(Platformctl, PrintsTheKeysBesideABadLine) {
    m_root.Write("keys.ini", "F8=Fire\nF9=XF86Exit\n");
    const auto keys = Run({"keys"});
    EXPECT_EQ(keys.status, 1);
    EXPECT_EQ(keys.errors, "platformctl: " + m_root.Path("keys.ini") +
                               ": line 1: not a key of the remote control: Fire\n");
    EXPECT_THAT(keys.output, HasSubstr("F9\tXF86Exit\n"));
}

TEST_F(Platformctl, FailsIfItsOutputCannotBeWritten) {
    Do({"region", "italy"});
    for (const char* command : {"list", "list --json", "factory get 194", "--help"}) {
        ChildProcess process(
            {"sh", "-c", BuiltProgram("platformctl") + ' ' + command + " >/dev/full"});
        EXPECT_EQ(process.WaitForExit(), 1) << command;
        EXPECT_EQ(process.Errors(), "platformctl: standard output: No space left on device\n");
    }
}

TEST_F(Platformctl, PrintsItsHelp) {
    const auto result = Run({"--help"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, StartsWith("Usage: platformctl"));
    EXPECT_EQ(result.errors, "");
}

TEST_F(Platformctl, PrintsItsVersion) {
    const auto result = Run({"--version"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.output, "platformctl " APPLIST_VERSION "\n");
}

// A program that only reads and writes files must start without it.
TEST_F(Platformctl, LinksNoToolkit) {
    ChildProcess readelf({"readelf", "-d", BuiltProgram("platformctl")});
    ASSERT_EQ(readelf.WaitForExit(), 0);
    EXPECT_THAT(readelf.Output(), HasSubstr("libglib"));
    for (const char* library : {"libelementary", "libecore", "libeina", "libX11"}) {
        EXPECT_THAT(readelf.Output(), Not(HasSubstr(library)));
    }
}

TEST_F(Platformctl, LeavesADamagedFileAsItIs) {
    m_root.Write("memory/settings.ini", "damage\n");
    for (const Arguments& arguments : {Arguments{"set", DATA_SERVICE, "int", "2"},
                                       {"unset", DATA_SERVICE},
                                       {"get", DATA_SERVICE},
                                       {"list"}}) {
        const auto result = Run(arguments);
        EXPECT_EQ(result.status, 1) << arguments[0];
        EXPECT_THAT(result.errors, HasSubstr(m_root.Path("memory/settings.ini") + ": damaged: "));
    }
    EXPECT_EQ(m_root.Content("memory/settings.ini"), "damage\n");
    EXPECT_THAT(Run({"list"}).output, HasSubstr(DATA_SERVICE + "\tint\tunreadable\n"));
}

TEST_F(Platformctl, ReportsASettingThatIsStoredWithTheWrongType) {
    m_root.Write("memory/settings.ini", "[settings]\n" + DATA_SERVICE + "=bool:true\n");
    const auto result = Run({"get", DATA_SERVICE});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors,
              "platformctl: setting " + DATA_SERVICE + " is stored as bool, not as int\n");
}

TEST_F(Platformctl, UsesTheUsersFoldersWithoutARoot) {
    const ChildProcess::Environment user{{"APPLIST_PLATFORM_ROOT", std::nullopt},
                                         {"XDG_CONFIG_HOME", m_root.Path("config")},
                                         {"XDG_RUNTIME_DIR", m_root.Path("run")},
                                         {"XDG_DATA_HOME", m_root.Path("data")}};
    EXPECT_EQ(Run({"set", AUTORUN, "bool", "true"}, user).status, 0);
    EXPECT_EQ(Run({"set", AUTOSTART, "int", "1"}, user).status, 0);
    EXPECT_EQ(Run({"region", "italy"}, user).status, 0);
    EXPECT_THAT(m_root.Content("config/applist/settings.ini"), HasSubstr(AUTORUN));
    EXPECT_THAT(m_root.Content("run/applist/settings.ini"), HasSubstr(AUTOSTART));
    EXPECT_THAT(m_root.Content("data/applist/factory.ini"), HasSubstr("194=8"));
    EXPECT_EQ(Run({"get", AUTORUN}, user).output, "true\n");
    EXPECT_EQ(Run({"get", AUTORUN}).status, 1);
}

struct Mistake {
    std::vector<std::string> arguments;
    std::string message;
};

class MistakenPlatformctl : public Platformctl, public testing::WithParamInterface<Mistake> {};

TEST_P(MistakenPlatformctl, ReportsTheMistakeAndWritesNothing) {
    const auto result = Run(GetParam().arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, StartsWith("platformctl: " + GetParam().message));
    EXPECT_THAT(result.errors, EndsWith("\n"));
    EXPECT_TRUE(std::filesystem::is_empty(m_root.Path("")));
}

INSTANTIATE_TEST_SUITE_P(
    OfEachKind, MistakenPlatformctl,
    testing::Values(
        Mistake{{}, "no command"}, Mistake{{"frobnicate"}, "unknown command 'frobnicate'"},
        Mistake{{"factory"}, "'factory' must be followed by one of: get, set, unset"},
        Mistake{{"list", "--yaml"}, "unknown option --yaml"},
        Mistake{{"get"}, "get takes KEY; see platformctl get --help"},
        Mistake{{"list", "all"}, "list takes no arguments; see platformctl list --help"},
        Mistake{{"set", AUTORUN, "true"}, "set takes KEY bool|int VALUE; "},
        Mistake{{"get", "db/unknown"}, "unknown setting 'db/unknown'; known: " + AUTORUN},
        Mistake{{"set", "db/unknown", "int", "1"}, "unknown setting 'db/unknown'"},
        Mistake{{"unset", "memory/"}, "unknown setting 'memory/'"},
        Mistake{{"set", AUTORUN, "float", "1"}, "unknown type 'float'; known: bool, int"},
        Mistake{{"set", AUTORUN, "int", "1"}, "setting " + AUTORUN + " is of type bool, not int"},
        Mistake{{"set", DATA_SERVICE, "bool", "1"},
                "setting " + DATA_SERVICE + " is of type int, not bool"},
        Mistake{{"set", AUTORUN, "bool", "yes"}, "value 'yes' is not a bool"},
        Mistake{{"set", AUTORUN, "bool", "2"}, "value '2' is not a bool"},
        Mistake{{"set", AUTORUN, "bool", ""}, "value '' is not a bool"},
        Mistake{{"set", DATA_SERVICE, "int", "-1"},
                "value -1 is out of range for " + DATA_SERVICE + ": 0 to 7"},
        Mistake{{"set", DATA_SERVICE, "int", "8"},
                "value 8 is out of range for " + DATA_SERVICE + ": 0 to 7"},
        Mistake{{"set", TEXT_SIZE, "int", "200"},
                "value 200 is out of range for " + TEXT_SIZE + ": 100 to 175"},
        Mistake{{"set", TEXT_SIZE, "int", "110"},
                "value 110 is not valid for " + TEXT_SIZE + ": 100 to 175 in steps of 25"},
        Mistake{{"set", DATA_SERVICE, "int", "2x"}, "value '2x' is not a 32-bit number"},
        Mistake{{"set", AUTOSTART, "int", "2147483648"},
                "value '2147483648' is not a 32-bit number"},
        Mistake{{"set", AUTOSTART, "int", "-2147483649"},
                "value '-2147483649' is not a 32-bit number"},
        Mistake{{"factory", "get", "195"}, "unknown factory item '195'; known: 194"},
        Mistake{{"factory", "set", "x", "1"}, "unknown factory item 'x'"},
        Mistake{{"factory", "unset", "0194x"}, "unknown factory item '0194x'"},
        Mistake{{"factory", "set", "194", "4294967296"},
                "value '4294967296' is not a 32-bit number"},
        Mistake{{"region", "atlantis"},
                "unknown region 'atlantis'; known: italy, brazil, argentina, uruguay, none"},
        Mistake{{"launch"}, "launch takes APP_ID [KEY=VALUE...]; "},
        Mistake{{"launch", "org.example.app", "text"}, "extra data 'text' is not KEY=VALUE"},
        Mistake{{"launch", "org.example.app", "=x"}, "extra data '=x' is not KEY=VALUE"}),
    [](const auto& row) { return "Row" + std::to_string(row.index); });

}  // namespace
}  // namespace applist::test
