// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Eina.h>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <glib.h>
#include <sched.h>
#include <string>
#include <unistd.h>

#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "app/ToolkitMessages.h"
#include "log/LogRecord.h"
#include "log/LogWriter.h"
#include "platform_log.h"

using testing::ElementsAre;
using testing::Pair;

namespace applist::desktop {
namespace {

TEST(LogLevel, IsOneOfThreeWords) {
    EXPECT_EQ(ParseLogLevel("error"), PLATFORM_LOG_ERROR);
    EXPECT_EQ(ParseLogLevel("info"), PLATFORM_LOG_INFO);
    EXPECT_EQ(ParseLogLevel("debug"), PLATFORM_LOG_DEBUG);
    for (const char* value : {"", "Error", "debug ", "3", "warning", "errordebug"}) {
        EXPECT_EQ(ParseLogLevel(value), std::nullopt) << value;
    }
}

TEST(LogLocation, IsReadFromTheMessagesPrefixAndNotFromItsText) {
    EXPECT_EQ(ParseLocation("AppList.cpp: SetModel(42) > [SetModel:42] text"),
              (CodeLocation{"AppList.cpp", "SetModel", "42"}));
    EXPECT_EQ(ParseLocation("Bus.cpp: operator()(7) > [operator():7] text"),
              (CodeLocation{"Bus.cpp", "operator()", "7"}));
    EXPECT_EQ(ParseLocation("a.cpp: f(1) > [f:1] name: g(2) > [g:2] "),
              (CodeLocation{"a.cpp", "f", "1"}));
    for (const char* message :
         {"", "text", "a.cpp: text", "a.cpp: f(1) text", "a.cpp: f(1) > [f:2] text",
          "a.cpp: f(1) > [g:1] text", "a.cpp: f(x) > [f:x] text", "a.cpp: f() > [f:] text", ") > [",
          "(1) > [a: b", "a.cpp: ) > [x: "}) {
        EXPECT_EQ(ParseLocation(message), std::nullopt) << message;
    }
}

std::string LineOf(int priority, const std::string& tag, const std::string& message) {
    return StandardErrorLine({priority, tag, message, std::nullopt});
}

TEST(StandardErrorLine, NamesTagAndLevelAndEndsOnceHoweverTheMessageEnds) {
    EXPECT_EQ(LineOf(PLATFORM_LOG_ERROR, "applist", "text"), "applist error: text\n");
    EXPECT_EQ(LineOf(PLATFORM_LOG_INFO, "GLib", "text"), "GLib info: text\n");
    EXPECT_EQ(LineOf(PLATFORM_LOG_DEBUG, "eo", "text\n\n"), "eo debug: text\n");
    EXPECT_EQ(LineOf(PLATFORM_LOG_DEBUG, "eo", "\n"), "eo debug: \n");
}

TEST(StandardErrorLine, ShowsControlCharactersOfOneAndTwoBytesInsteadOfObeyingThem) {
    EXPECT_EQ(LineOf(PLATFORM_LOG_DEBUG, "a", "x\ny\x1B[31m\x7F \xC3\xA9"),
              "a debug: x\\x0ay\\x1b[31m\\x7f \xC3\xA9\n");
    EXPECT_EQ(LineOf(PLATFORM_LOG_DEBUG, "a", "\xC2\x80\xC2\x9B[31m\xC2\x9F\xC2\xA0\xC2"),
              "a debug: \\xc2\\x80\\xc2\\x9b[31m\\xc2\\x9f\xC2\xA0\xC2\n");
}

TEST(JournalFields, CarryTheMessageItsPriorityAndItsPlaceIfThatIsKnown) {
    const CodeLocation place{"a.cpp", "f", "5"};
    EXPECT_THAT(JournalFields({PLATFORM_LOG_ERROR, "applist", "text\n\n", place}),
                ElementsAre(Pair("MESSAGE", "text"), Pair("PRIORITY", "3"),
                            Pair("SYSLOG_IDENTIFIER", "applist"), Pair("CODE_FILE", "a.cpp"),
                            Pair("CODE_LINE", "5"), Pair("CODE_FUNC", "f")));
    EXPECT_THAT(JournalFields({PLATFORM_LOG_INFO, "GLib", "text", std::nullopt}),
                ElementsAre(Pair("MESSAGE", "text"), Pair("PRIORITY", "6"),
                            Pair("SYSLOG_IDENTIFIER", "GLib")));
}

TEST(UnknownWatchComplaint, IsRecognisedAndNothingThatOnlyLooksLikeIt) {
    constexpr const char* complaint = "Invalid id 17 passed to g_bus_unwatch_name()";
    EXPECT_TRUE(IsUnknownWatchComplaint("GLib-GIO", complaint));
    EXPECT_FALSE(IsUnknownWatchComplaint("GLib", complaint));
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

TEST(HarmlessToolkitComplaint, IsRecognisedAndNothingThatOnlyLooksLikeIt) {
    struct Complaint {
        const char* function;
        const char* message;
        bool harmless;
    };
    constexpr const char* focus =
        "_efl_ui_focus_manager_calc_efl_ui_focus_manager_manager_focus_set";
    constexpr const char* index = "_efl_access_object_index_in_parent_get";
    constexpr const char* emit = "_efl_access_object_event_emit";
    for (const auto& [function, message, harmless] : std::initializer_list<Complaint>{
             {focus, "Could not fetch a node located at 0x4000", true},
             {focus, "Could not fetch", false},
             {"focus_set", "Could not fetch a node located at 0x4", false},
             {"node_get", "Focusable 0x4 (Elm.Genlist.Item) not registered in manager 0x5", true},
             {"node_get", "Cannot get a node", false},
             {focus, "Focusable 0x4 (Elm.Genlist.Item) not registered in manager 0x5", false},
             {index,
              "Object Elm.Genlist not present in its AT-SPI parents (Elm.Popup) children list! "
              "This should never happen.",
              true},
             {index, "Object Elm.Button not present in its AT-SPI", false},
             {emit,
              "Invalid parameters, event: state,changed, obj: Efl.Ui.Focus.Composition_Adapter",
              true},
             {emit, "Invalid parameters, event: removed, obj: x", false}}) {
        EXPECT_EQ(IsHarmlessToolkitComplaint(function, message), harmless) << message;
    }
}

std::string ErrorsOf(void (*body)()) {
    testing::internal::CaptureStderr();
    body();
    return testing::internal::GetCapturedStderr();
}

/// A value of APPLIST_LOG, and the lines written then. A process reads the variable once.
using Level = std::pair<const char*, const char*>;

class PlatformLogAt : public testing::TestWithParam<Level> {};

TEST_P(PlatformLogAt, ALevelWritesItsLinesAndThoseAbove) {
    const auto [level, lines] = GetParam();
    *level != '\0' ? setenv("APPLIST_LOG", level, 1) : unsetenv("APPLIST_LOG");
    EXPECT_EQ(ErrorsOf([] {
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "debug %d", 1);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "applist", "info %d", 2);
                  __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "error %d", 3);
              }),
              lines);
}

INSTANTIATE_TEST_SUITE_P(Values, PlatformLogAt,
                         testing::Values(Level{"", "applist error: error 3\n"},
                                         Level{"info",
                                               "applist info: info 2\napplist error: error 3\n"},
                                         Level{"debug",
                                               "applist debug: debug 1\napplist info: info 2\n"
                                               "applist error: error 3\n"}));

TEST(PlatformLog, DoesNotLookAtTheArgumentsOfALineThatIsOff) {
    unsetenv("APPLIST_LOG");
    // Formatting this would read unmapped memory.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const char* volatile nowhere = reinterpret_cast<const char*>(uintptr_t{8});
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_DEBUG, "applist", "%s", nowhere), 0);
}

TEST(PlatformLog, ReportsAWrongLevelOnceAndWritesErrors) {
    setenv("APPLIST_LOG", "loud", 1);
    EXPECT_EQ(
        ErrorsOf([] {
            __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_INFO, "applist", "not written");
            __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "first");
            __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "second");
        }),
        "applist error: APPLIST_LOG: unknown level \"loud\"; it is one of error, info, debug. "
        "Using error\napplist error: first\napplist error: second\n");
}

TEST(PlatformLog, WritesALongMessageWhole) {
    const std::string text(5000, 'x');
    testing::internal::CaptureStderr();
    __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "%s", text.c_str());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "applist error: " + text + "\n");
}

TEST(PlatformLog, SaysWhenALineCannotBeWritten) {
    const int saved = dup(STDERR_FILENO);
    close(STDERR_FILENO);
    const int result = __dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "lost");
    dup2(saved, STDERR_FILENO);
    close(saved);
    EXPECT_LT(result, 0);
}

TEST(PlatformLog, TakesGlibsMessages) {
    setenv("APPLIST_LOG", "info", 1);
    EXPECT_EQ(ErrorsOf([] {
                  TakeGlibMessages();
                  g_log("Dom", G_LOG_LEVEL_CRITICAL, "critical");
                  g_log("Dom", G_LOG_LEVEL_WARNING, "warning");
                  g_log("Dom", G_LOG_LEVEL_MESSAGE, "message");
                  g_log("Dom", G_LOG_LEVEL_DEBUG, "debug");
                  g_log(nullptr, G_LOG_LEVEL_WARNING, "nobody's");
              }),
              "Dom error: critical\nDom error: warning\nDom info: message\nGLib error: nobody's\n");
}

TEST(PlatformLog, HidesGlibsComplaintAboutUnknownWatchesAndNoOther) {
    unsetenv("APPLIST_LOG");
    EXPECT_EQ(
        ErrorsOf([] {
            TakeGlibMessages();
            g_log("GLib-GIO", G_LOG_LEVEL_WARNING, "Invalid id 17 passed to g_bus_unwatch_name()");
            g_log("GLib-GIO", G_LOG_LEVEL_WARNING, "Invalid id 17 passed to g_bus_unown_name()");
        }),
        "GLib-GIO error: Invalid id 17 passed to g_bus_unown_name()\n");
}

TEST(PlatformLog, TakesTheToolkitsMessages) {
    unsetenv("APPLIST_LOG");
    testing::internal::CaptureStderr();
    {
        const ToolkitMessages messages;
        const int domain = eina_log_domain_register("sample", nullptr);
        eina_log_print(domain, EINA_LOG_LEVEL_ERR, "/x/file.c", "function", 12, "bad %d", 5);
        eina_log_print(domain, EINA_LOG_LEVEL_WARN, "file.c", "function", 13, "less bad");
        eina_log_domain_unregister(domain);
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "sample error: /x/file.c:12 function() bad 5\n");
}

constexpr const char* FOLDER = "/run/systemd/journal";

bool HaveRunToOurselves() {
    const bool apart = unshare(CLONE_NEWNS) == 0 || unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0;
    // The names are ignored, but valgrind rejects null.
    return apart && mount("none", "/", "none", MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", "/run", "tmpfs", 0, nullptr) == 0;
}

sockaddr_un AddressOf(const std::string& name) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    (FOLDER + ("/" + name)).copy(address.sun_path, sizeof address.sun_path - 1);
    return address;
}

template <typename Function>
bool At(const std::string& name, Function* function, int socket) {
    const sockaddr_un address = AddressOf(name);
    return function(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
}

/// A field in the journal's binary form: name, length, value.
std::string Field(const std::string& name, const std::string& value) {
    std::string length(sizeof(uint64_t), '\0');
    length[0] = static_cast<char>(value.size());
    return name + "\n" + length + value + "\n";
}

class AJournal : public testing::Test {
protected:
    void SetUp() override {
        if (!HaveRunToOurselves()) {
            GTEST_SKIP() << "no mount namespace here: " << std::strerror(errno);
        }
        std::filesystem::create_directories(FOLDER);
        m_records = socket(AF_UNIX, SOCK_DGRAM, 0);
        m_streams = socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_TRUE(At("socket", bind, m_records));
        ASSERT_TRUE(At("stdout", bind, m_streams) && listen(m_streams, 1) == 0);
    }
    void TearDown() override {
        close(m_records);
        close(m_streams);
    }

    /// Connects standard error as the journal does for the programs of a service.
    static void ConnectStandardError() {
        const int stream = socket(AF_UNIX, SOCK_STREAM, 0);
        ASSERT_TRUE(At("stdout", connect, stream));
        dup2(stream, STDERR_FILENO);
        close(stream);
    }

    /// The bytes of the next record; empty if none is pending.
    std::string Record() const {
        std::string bytes(4096, '\0');
        const ssize_t size = recv(m_records, bytes.data(), bytes.size(), MSG_DONTWAIT);
        bytes.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return bytes;
    }

    int m_records = -1;
    int m_streams = -1;
};

TEST_F(AJournal, GetsRecordsWithTheirPriorityAndTheirPlaceInTheCode) {
    ConnectStandardError();
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist",
                           "Main.cpp: main(7) > [main:7] nothing works\n\n"),
              0);
    EXPECT_EQ(Record(), Field("MESSAGE", "Main.cpp: main(7) > [main:7] nothing works") +
                            Field("PRIORITY", "3") + Field("SYSLOG_IDENTIFIER", "applist") +
                            Field("CODE_FILE", "Main.cpp") + Field("CODE_LINE", "7") +
                            Field("CODE_FUNC", "main"));
    EXPECT_EQ(Record(), "");
}

TEST_F(AJournal, GetsNothingFromAProgramWhoseStandardErrorIsNotItsOwn) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "here"), 0);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "applist error: here\n");
    EXPECT_EQ(Record(), "");
}

TEST_F(AJournal, ThatIsGoneLeavesTheLineOnStandardError) {
    ConnectStandardError();
    const int stream = accept(m_streams, nullptr, nullptr);
    std::filesystem::remove(std::string(FOLDER) + "/socket");
    EXPECT_EQ(__dlog_print(PLATFORM_LOG_MAIN, PLATFORM_LOG_ERROR, "applist", "here"), 0);
    std::string line(100, '\0');
    const ssize_t size = recv(stream, line.data(), line.size(), MSG_DONTWAIT);
    close(stream);
    ASSERT_GT(size, 0);
    EXPECT_EQ(line.substr(0, static_cast<size_t>(size)), "applist error: here\n");
}

}  // namespace
}  // namespace applist::desktop
