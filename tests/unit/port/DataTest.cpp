// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <filesystem>
#include <vector>

#include <gmock/gmock.h>

#include "data/FactoryData.h"
#include "data/KeyTable.h"
#include "data/SettingsStore.h"
#include "factory_data.h"
#include "fakes/FakePlatformLog.h"
#include "settings_store.h"
#include "support/PlatformRoot.h"
#include "support/TemporaryDir.h"

using namespace applist::desktop;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace applist::test {
namespace {

constexpr const char* PERSISTENT = "db/settings.ini";
constexpr const char* VOLATILE = "memory/settings.ini";

class SettingsStore : public testing::Test {
protected:
    SettingsStore() { ClearLog(); }
    PlatformRoot m_root;
    int m_value = 77;
};

TEST(SettingText, IsReadBackAsItWasWritten) {
    for (const Setting setting : {Setting(true), Setting(false), Setting(0), Setting(-5),
                                  Setting(INT_MAX), Setting(INT_MIN)}) {
        EXPECT_EQ(Decode(Encode(setting)), setting) << Encode(setting);
    }
    EXPECT_EQ(Encode(true), "bool:true");
    EXPECT_EQ(Encode(-5), "int:-5");
}

TEST(SettingText, OfAnyOtherFormIsNoSetting) {
    for (const char* type : {"bool:", "int:", "float:", "Int:", ""}) {
        for (const char* value : {"", "1.0", "True", "true ", "-", "+1", " 1", "1 ", "1x", "0x10",
                                  "2147483648", "-2147483649", "99999999999999999999"}) {
            EXPECT_EQ(Decode(std::string(type) + value), std::nullopt) << type << value;
        }
    }
    for (const char* text : {"true", "1", "bool:1", "int:true", "Int:1", "int"}) {
        EXPECT_EQ(Decode(text), std::nullopt) << text;
    }
}

TEST_F(SettingsStore, KeepsPersistentAndVolatileKeysApartAndTheLastValueAlone) {
    ASSERT_EQ(WriteSetting("db/a/b", 5), std::nullopt);
    ASSERT_EQ(WriteSetting("db/a/b", true), std::nullopt);
    ASSERT_EQ(WriteSetting("memory/a/b", 5), std::nullopt);
    EXPECT_EQ(m_root.Content(PERSISTENT), "[settings]\ndb/a/b=bool:true\n");
    EXPECT_EQ(m_root.Content(VOLATILE), "[settings]\nmemory/a/b=int:5\n");
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_root.Path("db"))) {
        names.push_back(entry.path().filename());
    }
    EXPECT_THAT(names, testing::UnorderedElementsAre("settings.ini", "settings.ini.lock"));
}

TEST_F(SettingsStore, KeepsTheRestOfTheFile) {
    m_root.Write(PERSISTENT, "# by hand\n[settings]\n# why\ndb/a=int:1\n[other]\nkey=value\n");
    ASSERT_EQ(WriteSetting("db/b", 2), std::nullopt);
    const std::string content = m_root.Content(PERSISTENT);
    for (const char* kept : {"# by hand", "# why", "db/a=int:1", "[other]", "key=value"}) {
        EXPECT_THAT(content, HasSubstr(kept));
    }
    EXPECT_EQ(*ReadSetting("db/b"), Setting(2));
}

TEST_F(SettingsStore, ReadsALastLineWithoutItsEnd) {
    for (const char* end : {"", "\r", "\n", "\r\n"}) {
        m_root.Write(PERSISTENT, std::string("[settings]\ndb/a=int:5") + end);
        EXPECT_EQ(*ReadSetting("db/a"), Setting(5));
    }
}

TEST_F(SettingsStore, RemovesAKeyAndNoOther) {
    ASSERT_EQ(WriteSetting("db/a", 1), std::nullopt);
    ASSERT_EQ(WriteSetting("db/b", 2), std::nullopt);
    EXPECT_EQ(RemoveSetting("db/a"), std::nullopt);
    EXPECT_EQ(RemoveSetting("db/never"), std::nullopt);
    EXPECT_EQ(*ReadSetting("db/a"), std::nullopt);
    EXPECT_EQ(ReadSetting("db/a").error(), "");
    EXPECT_EQ(*ReadSetting("db/b"), Setting(2));
}

TEST_F(SettingsStore, LogsNothingForAMissingKey) {
    EXPECT_LT(vconf_get_bool("db/none", &m_value), 0);
    EXPECT_THAT(Log(), ElementsAre());
}

TEST_F(SettingsStore, ReadsAnUnsetOptionalSettingAsItsDefault) {
    EXPECT_EQ(vconf_get_bool("db/menu/broadcasting/autorun-dataservice", &m_value), 0);
    EXPECT_EQ(m_value, 0);
    m_value = 77;
    EXPECT_EQ(vconf_get_int("memory/javamw/autostart-app", &m_value), 0);
    EXPECT_EQ(m_value, 0);
    EXPECT_EQ(*ReadSetting("memory/javamw/autostart-app"), std::nullopt);
    EXPECT_THAT(Log(), ElementsAre());
}

TEST_F(SettingsStore, HasNoDefaultForADamagedOptionalSetting) {
    m_root.Write(VOLATILE, "[settings]\nmemory/javamw/autostart-app=int:1x\n");
    EXPECT_LT(vconf_get_int("memory/javamw/autostart-app", &m_value), 0);
    EXPECT_EQ(m_value, 77);
    EXPECT_THAT(Log(), testing::SizeIs(1));
}

TEST_F(SettingsStore, LogsAKeyOfTheOtherType) {
    ASSERT_EQ(WriteSetting("db/a", 1), std::nullopt);
    EXPECT_LT(vconf_get_bool("db/a", &m_value), 0);
    EXPECT_THAT(Log(), ElementsAre(Error("setting 'db/a' is of type int, not bool")));
}

TEST_F(SettingsStore, LogsAKeyOfNoFile) {
    for (const char* key : {"a/b", "", "db", "DB/a", "/db/a"}) {
        ClearLog();
        EXPECT_LT(vconf_get_int(key, &m_value), 0);
        EXPECT_THAT(Log(), ElementsAre(Error(std::string("setting '") + key +
                                             "' is neither under db/ nor under memory/")));
    }
}

TEST_F(SettingsStore, LogsADamagedValueAndReadsTheOthers) {
    m_root.Write(PERSISTENT, "[settings]\ndb/a=int:1x\ndb/b=int:2\n");
    EXPECT_LT(vconf_get_int("db/a", &m_value), 0);
    EXPECT_EQ(m_value, 77);
    EXPECT_THAT(Log(), ElementsAre(Error(m_root.Path(PERSISTENT) +
                                         ": setting 'db/a' does not have a bool or int value")));
    EXPECT_EQ(vconf_get_int("db/b", &m_value), 0);
    EXPECT_EQ(m_value, 2);
}

class DamagedSettings : public SettingsStore, public testing::WithParamInterface<std::string> {};

TEST_P(DamagedSettings, FailToBeReadOrWrittenAndLeaveTheOtherFileAlone) {
    m_root.Write(PERSISTENT, GetParam());
    EXPECT_LT(vconf_get_bool("db/a", &m_value), 0);
    EXPECT_LT(vconf_get_int("db/a", &m_value), 0);
    EXPECT_EQ(m_value, 77);
    ASSERT_EQ(Log().size(), 2U);
    EXPECT_EQ(Log()[0].priority, Error("").priority);
    EXPECT_THAT(Log()[0].message, HasSubstr(m_root.Path(PERSISTENT) + ": damaged: "));
    const auto failure = WriteSetting("db/a", 1);
    ASSERT_TRUE(failure);
    EXPECT_THAT(*failure, HasSubstr(m_root.Path(PERSISTENT) + ": damaged: "));
    EXPECT_THAT(*failure, HasSubstr("not changed"));
    EXPECT_TRUE(RemoveSetting("db/a"));
    EXPECT_EQ(m_root.Content(PERSISTENT), GetParam());
    ASSERT_EQ(WriteSetting("memory/a", 1), std::nullopt);
    EXPECT_EQ(vconf_get_int("memory/a", &m_value), 0);
}

INSTANTIATE_TEST_SUITE_P(InEveryWay, DamagedSettings,
                         testing::Values("garbage", "[settings\ndb/a=int:1\n",
                                         "db/a=int:1\n[settings]\n", "[settings]\ndb/a\n",
                                         "[settings]\ndb/a=int:1\n=int:2\n",
                                         std::string("\0\0\0\0", 4), "\xff\xfe[settings]\n"));

TEST_F(SettingsStore, FailsWhereItsFileIsNoFile) {
    std::filesystem::create_directories(m_root.Path(PERSISTENT));
    EXPECT_LT(vconf_get_int("db/a", &m_value), 0);
    ASSERT_EQ(Log().size(), 1U);
    EXPECT_THAT(Log()[0].message, HasSubstr(m_root.Path(PERSISTENT) + ": cannot be read: "));
    EXPECT_TRUE(WriteSetting("db/a", 1));
}

TEST_F(SettingsStore, FailsWhereItsFolderIsAFileOrTheLockAFolder) {
    m_root.Write("db", "in the way");
    const auto noFolder = WriteSetting("db/a", 1);
    ASSERT_TRUE(noFolder);
    EXPECT_THAT(*noFolder, HasSubstr(m_root.Path("db") + ": cannot be created: "));
    EXPECT_EQ(m_root.Content("db"), "in the way");
    std::filesystem::create_directories(m_root.Path(std::string(VOLATILE) + ".lock"));
    const auto noLock = WriteSetting("memory/a", 1);
    ASSERT_TRUE(noLock);
    EXPECT_THAT(*noLock, HasSubstr("settings.ini.lock: cannot be locked: Is a directory"));
}

TEST_F(SettingsStore, RefusesKeysThatAFileCannotHoldAndReadsThemAsMissing) {
    for (const char* key : {"db/a=b", "db/a[b]", "db/a b", "db/a\nb", "db/\xc3\xa4", "a/b", ""}) {
        EXPECT_TRUE(WriteSetting(key, 1)) << key;
    }
    EXPECT_FALSE(std::filesystem::exists(m_root.Path(PERSISTENT)));
    m_root.Write(PERSISTENT, "[settings]\ndb/a=int:1\n");
    for (const char* key : {"db/a=b", "db/a[b]", "db/a b", "db/a\nb", "db/\xc3\xa4", "db/"}) {
        EXPECT_LT(vconf_get_int(key, &m_value), 0) << key;
    }
    EXPECT_EQ(m_value, 77);
}

constexpr const char* FILE_NAME = "factory.ini";

class FactoryItems : public testing::Test {
protected:
    FactoryItems() { ClearLog(); }
    /// Reads as the program does. Only one word of the buffer is accessible.
    int Read(int id) { return GetDataDirect(id, &m_word); }

    PlatformRoot m_root;
    int m_word = 77;
};

TEST_F(FactoryItems, AreStoredByTheirNumber) {
    ASSERT_EQ(WriteFactoryItem(194, 8), std::nullopt);
    ASSERT_EQ(WriteFactoryItem(195, -1), std::nullopt);
    EXPECT_EQ(m_root.Content(FILE_NAME), "[items]\n194=8\n195=-1\n");
    EXPECT_EQ(Read(194), FACTORY_DATA_INTEGER);
    EXPECT_EQ(m_word, 8);
}

TEST_F(FactoryItems, CanBeRemoved) {
    ASSERT_EQ(WriteFactoryItem(194, 8), std::nullopt);
    EXPECT_EQ(RemoveFactoryItem(194), std::nullopt);
    EXPECT_NE(Read(194), FACTORY_DATA_INTEGER);
    EXPECT_EQ(m_word, 77);
    EXPECT_THAT(Log(), ElementsAre());
}

TEST_F(FactoryItems, ThatAreNoNumberAreFailuresThatNameTheFile) {
    for (const char* text :
         {"", "eight", "8.0", "8 8", "0x8", "+8", "2147483648", "-2147483649", "8;"}) {
        ClearLog();
        m_root.Write(FILE_NAME, std::string("[items]\n194=") + text + "\n");
        EXPECT_NE(Read(194), FACTORY_DATA_INTEGER) << text;
        EXPECT_EQ(m_word, 77);
        EXPECT_THAT(Log(), ElementsAre(Error(m_root.Path(FILE_NAME) +
                                             ": factory item 194 is not a 32-bit number")));
    }
}

TEST_F(FactoryItems, OfADamagedFileAreFailuresAndStayAsTheyAre) {
    m_root.Write(FILE_NAME, "194=8\n");
    EXPECT_NE(Read(194), FACTORY_DATA_INTEGER);
    ASSERT_EQ(Log().size(), 1U);
    EXPECT_THAT(Log()[0].message, HasSubstr(m_root.Path(FILE_NAME) + ": damaged: "));
    const auto failure = WriteFactoryItem(194, 81);
    ASSERT_TRUE(failure);
    EXPECT_THAT(*failure, HasSubstr(m_root.Path(FILE_NAME)));
    EXPECT_EQ(m_root.Content(FILE_NAME), "194=8\n");
}

TEST(KeyTable, NamesTheKeysOfKeyboardsAndReceivers) {
    const KeyTable table;
    EXPECT_STREQ(table.Find("Escape"), "XF86Back");
    for (const char* key : {"F10", "Keycode-182", "XF86Close"}) {
        EXPECT_STREQ(table.Find(key), "XF86Exit") << key;
    }
    for (const char* key : {"KP_Enter", "XF86Select", "XF86OK", "Keycode-360", "Keycode-361"}) {
        EXPECT_STREQ(table.Find(key), "Return") << key;
    }
    EXPECT_STREQ(table.Find("XF86ChannelUp"), "Prior");
    EXPECT_STREQ(table.Find("XF86ChannelDown"), "Next");
}

TEST(KeyTable, LeavesOtherKeysTheirNames) {
    for (const char* key : {"Up", "Down", "Left", "Right", "Return", "XF86Back", "XF86Exit", "F1",
                            "Prior", "Next", "escape", "Keycode-18", "Keycode-1820", ""}) {
        EXPECT_EQ(KeyTable().Find(key), nullptr) << key;
    }
}

TEST(KeyTable, TakesLinesOfASet) {
    KeyTable table;
    EXPECT_THAT(table.Add("# the set's receiver\n[keys]\n\nF1=XF86Back\r\n  F2 =\tNext\nF10=Up"),
                IsEmpty());
    EXPECT_STREQ(table.Find("F1"), "XF86Back");
    EXPECT_STREQ(table.Find("F2"), "Next");
    EXPECT_STREQ(table.Find("F10"), "Up") << "replaces the built-in entry";
    EXPECT_STREQ(table.Find("Escape"), "XF86Back");
}

TEST(KeyTable, GivesAKeyItsOwnNameBack) {
    KeyTable table;
    EXPECT_THAT(table.Add("F10=F10\nUp=Up\n"), IsEmpty());
    EXPECT_EQ(table.Find("F10"), nullptr);
    EXPECT_EQ(table.Find("Up"), nullptr);
}

TEST(KeyTable, ReportsEachBadLineAndTakesTheOthers) {
    KeyTable table;
    EXPECT_THAT(
        table.Add("F1=Up\nF2\n=Up\nF3=\nF4=Fire\n[other]\nF5=Down\n"),
        ElementsAre("line 2: not KEY=NAME", "line 3: not KEY=NAME",
                    "line 4: not a key of the remote control: ",
                    "line 5: not a key of the remote control: Fire", "line 6: not KEY=NAME"));
    EXPECT_STREQ(table.Find("F1"), "Up");
    EXPECT_STREQ(table.Find("F5"), "Down");
    EXPECT_EQ(table.Find("F4"), nullptr);
}

TEST(KeyTable, IsTheBuiltInOneWithoutAFile) {
    const test::TemporaryDir folder;
    const auto reading = ReadKeyTable(folder.path() / "keys.ini");
    EXPECT_THAT(reading.problems, IsEmpty());
    EXPECT_EQ(reading.table.All(), KeyTable().All());
}

TEST(KeyTable, NamesTheFileInItsProblems) {
    const test::TemporaryDir folder;
    const auto reading = ReadKeyTable(folder.path());
    ASSERT_EQ(reading.problems.size(), 1U);
    EXPECT_THAT(reading.problems[0], HasSubstr(folder.path().string() + ": cannot be read: "));
}

}  // namespace
}  // namespace applist::test
