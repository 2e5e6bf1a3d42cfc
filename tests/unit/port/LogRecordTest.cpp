// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "log/LogRecord.h"
#include "platform_log.h"

namespace applist::desktop {
namespace {

using testing::ElementsAre;
using testing::Pair;

TEST(LogLevel, IsOneOfThreeWords) {
    EXPECT_EQ(ParseLogLevel("error"), PLATFORM_LOG_ERROR);
    EXPECT_EQ(ParseLogLevel("info"), PLATFORM_LOG_INFO);
    EXPECT_EQ(ParseLogLevel("debug"), PLATFORM_LOG_DEBUG);
}

TEST(LogLevel, IsNothingElse) {
    for (const char* value : {"", "Error", "debug ", "3", "warning", "errordebug"}) {
        EXPECT_EQ(ParseLogLevel(value), std::nullopt) << value;
    }
}

TEST(LogLocation, IsReadFromTheMessagesPrefix) {
    EXPECT_EQ(ParseLocation("AppList.cpp: SetModel(42) > [SetModel:42] text"),
              (CodeLocation{"AppList.cpp", "SetModel", "42"}));
}

TEST(LogLocation, IsReadFromALambda) {
    EXPECT_EQ(ParseLocation("Bus.cpp: operator()(7) > [operator():7] text"),
              (CodeLocation{"Bus.cpp", "operator()", "7"}));
}

TEST(LogLocation, IsNotConfusedByTheText) {
    EXPECT_EQ(ParseLocation("a.cpp: f(1) > [f:1] name: g(2) > [g:2] "),
              (CodeLocation{"a.cpp", "f", "1"}));
}

TEST(LogLocation, IsUnknownForAMessageWithoutThePrefix) {
    for (const char* message :
         {"", "text", "a.cpp: text", "a.cpp: f(1) text", "a.cpp: f(1) > [f:2] text",
          "a.cpp: f(1) > [g:1] text", "a.cpp: f(x) > [f:x] text", "a.cpp: f() > [f:] text", ") > [",
          "(1) > [a: b", "a.cpp: ) > [x: "}) {
        EXPECT_EQ(ParseLocation(message), std::nullopt) << message;
    }
}

TEST(StandardErrorLine, NamesTagAndLevel) {
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_ERROR, "applist", "text", std::nullopt}),
              "applist error: text\n");
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_INFO, "GLib", "text", std::nullopt}),
              "GLib info: text\n");
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_DEBUG, "eo", "text", std::nullopt}),
              "eo debug: text\n");
}

TEST(StandardErrorLine, EndsOnceHoweverTheMessageEnds) {
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_DEBUG, "a", "text\n\n", std::nullopt}),
              "a debug: text\n");
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_DEBUG, "a", "\n", std::nullopt}), "a debug: \n");
}

TEST(StandardErrorLine, ShowsControlCharactersInsteadOfObeyingThem) {
    EXPECT_EQ(
        StandardErrorLine({PLATFORM_LOG_DEBUG, "a", "x\ny\x1B[31m\x7F \xC3\xA9", std::nullopt}),
        "a debug: x\\x0ay\\x1b[31m\\x7f \xC3\xA9\n");
}

TEST(StandardErrorLine, ShowsControlCharactersOfTwoBytesInsteadOfObeyingThem) {
    EXPECT_EQ(StandardErrorLine({PLATFORM_LOG_DEBUG, "a",
                                 "\xC2\x80\xC2\x9B[31m\xC2\x9F\xC2\xA0\xC2", std::nullopt}),
              "a debug: \\xc2\\x80\\xc2\\x9b[31m\\xc2\\x9f\xC2\xA0\xC2\n");
}

TEST(JournalFields, CarryTheMessageItsPriorityAndItsPlace) {
    const LogRecord record{PLATFORM_LOG_ERROR, "applist", "text\n\n",
                           CodeLocation{"a.cpp", "f", "5"}};
    EXPECT_THAT(JournalFields(record),
                ElementsAre(Pair("MESSAGE", "text"), Pair("PRIORITY", "3"),
                            Pair("SYSLOG_IDENTIFIER", "applist"), Pair("CODE_FILE", "a.cpp"),
                            Pair("CODE_LINE", "5"), Pair("CODE_FUNC", "f")));
}

TEST(JournalFields, LeaveOutAPlaceThatIsNotKnown) {
    const LogRecord record{PLATFORM_LOG_INFO, "GLib", "text", std::nullopt};
    EXPECT_THAT(JournalFields(record), ElementsAre(Pair("MESSAGE", "text"), Pair("PRIORITY", "6"),
                                                   Pair("SYSLOG_IDENTIFIER", "GLib")));
}

TEST(UnknownWatchComplaint, IsRecognised) {
    EXPECT_TRUE(
        IsUnknownWatchComplaint("GLib-GIO", "Invalid id 17 passed to g_bus_unwatch_name()"));
}

TEST(UnknownWatchComplaint, IsNothingThatOnlyLooksLikeIt) {
    EXPECT_FALSE(IsUnknownWatchComplaint("GLib", "Invalid id 17 passed to g_bus_unwatch_name()"));
    for (const char* message :
         {"Invalid id 17 passed to g_bus_unown_name()",
          "Invalid id  passed to g_bus_unwatch_name()",
          "Invalid id x passed to g_bus_unwatch_name()",
          "Invalid id -1 passed to g_bus_unwatch_name()",
          " Invalid id 17 passed to g_bus_unwatch_name()",
          "Invalid id 17 passed to g_bus_unwatch_name().", "Invalid id 17", ""}) {
        EXPECT_FALSE(IsUnknownWatchComplaint("GLib-GIO", message)) << message;
    }
}

constexpr const char* FOCUS_SET =
    "_efl_ui_focus_manager_calc_efl_ui_focus_manager_manager_focus_set";

TEST(HarmlessToolkitComplaint, IsRecognised) {
    EXPECT_TRUE(IsHarmlessToolkitComplaint(FOCUS_SET, "Could not fetch a node located at 0x4000"));
    EXPECT_TRUE(IsHarmlessToolkitComplaint(
        "_efl_access_object_index_in_parent_get",
        "Object Elm.Genlist not present in its AT-SPI parents (Elm.Popup) children list! This "
        "should never happen."));
    EXPECT_TRUE(IsHarmlessToolkitComplaint(
        "_efl_access_object_event_emit",
        "Invalid parameters, event: state,changed, obj: Efl.Ui.Focus.Composition_Adapter"));
}

TEST(HarmlessToolkitComplaint, IsNothingThatOnlyLooksLikeIt) {
    EXPECT_FALSE(IsHarmlessToolkitComplaint("focus_set", "Could not fetch a node located at 0x4"));
    EXPECT_FALSE(IsHarmlessToolkitComplaint(FOCUS_SET, "Could not fetch"));
    EXPECT_FALSE(IsHarmlessToolkitComplaint("_efl_access_object_index_in_parent_get",
                                            "Object Elm.Button not present in its AT-SPI"));
    EXPECT_FALSE(IsHarmlessToolkitComplaint("_efl_access_object_event_emit",
                                            "Invalid parameters, event: removed, obj: x"));
}

}  // namespace
}  // namespace applist::desktop
