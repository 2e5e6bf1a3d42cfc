// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A list that was prepared before it is launched.
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Number.h"
#include "support/Television.h"

namespace applist::test {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* VERSION_LINE = "APPLIST v: plm-applist-20150201.1\n";

using Environment = ChildProcess::Environment;

/// A set with a middleware and without a compositor.
class APreparedList : public testing::Test {
protected:
    /// Starts a process that waits for a launch; returns when it does.
    std::unique_ptr<ChildProcess> Prepare(Environment changes = {}) {
        changes["APPLIST_LOG"] = "info";
        auto prepared = Start({BuiltProgram("applist"), "--prepare"}, changes);
        EXPECT_TRUE(prepared->WaitForText("is prepared")) << prepared->Errors();
        return prepared;
    }
    std::unique_ptr<ChildProcess> Launch(const Environment& changes = {}) {
        return Start({BuiltProgram("applist-launch")}, changes);
    }
    std::unique_ptr<ChildProcess> Start(const std::vector<std::string>& command,
                                        const Environment& changes = {}) {
        Environment environment = set.Environment();
        for (const auto& [name, value] : changes) {
            environment[name] = value;
        }
        return std::make_unique<ChildProcess>(command, environment);
    }
    /// Returns true if this process, which was prepared, never became the application.
    static bool EndsUnused(ChildProcess& prepared) {
        return prepared.WaitForExit() == 0 && prepared.Output().empty() &&
               prepared.Errors().find("other surroundings") != std::string::npos;
    }
    static std::string SocketOf(const ChildProcess::Environment& environment) {
        return *environment.at("XDG_RUNTIME_DIR") + "/org.vantu.applist.prepared";
    }

    Television set{{}, {"openbox", ""}};
    std::unique_ptr<Middleware> middleware = set.StartMiddlewareWithThreeItems();
};

/// The same, with a prepared process.
class APreparedListIsReady : public APreparedList {
protected:
    std::unique_ptr<ChildProcess> prepared = Prepare();
};

/// The names on a bus, without a connection that stays.
std::string NamesOn(const PrivateBus& bus) {
    ChildProcess names({"gdbus", "call", "--address", bus.Address(), "--dest",
                        "org.freedesktop.DBus", "--object-path", "/", "--method",
                        "org.freedesktop.DBus.ListNames"});
    EXPECT_EQ(names.WaitForExit(), 0) << names.Errors();
    return names.Output();
}

TEST_F(APreparedList, HasDoneNothingOfTheProgramBeforeTheLaunch) {
    middleware.reset();
    const PrivateBus bus;
    const auto prepared = Prepare({{"DBUS_SYSTEM_BUS_ADDRESS", bus.Address()}});
    // The bus numbers its connections, so the first one is that of the question.
    EXPECT_EQ(NamesOn(bus), "(['org.freedesktop.DBus', ':1.0'],)\n");
    EXPECT_EQ(prepared->Output(), "");
    EXPECT_EQ(set.screen().WindowTitled(Television::LIST), 0U);
}

TEST_F(APreparedListIsReady, DoesNotWakeUpWhileItWaits) {
    EXPECT_TRUE(prepared->WaitForRest(1s));
}

TEST_F(APreparedListIsReady, ShowsThePictureOfAListThatWasNotPrepared) {
    Television other{{}, {"openbox", ""}};
    ASSERT_NO_FATAL_FAILURE(other.ShowThreeItems());
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    EXPECT_TRUE(
        set.screen().WaitUntil([&] { return set.screen().Grab() == other.screen().Grab(); }));
    EXPECT_EQ(prepared->WaitForExit(0ms), std::nullopt);
}

TEST_F(APreparedListIsReady, HasTheStreamsEnvironmentAndFolderOfItsLauncher) {
    const auto list =
        Start({"sh", "-c", "cd / && exec \"$0\" --extra a=b", BuiltProgram("applist-launch")},
              {{"APPLIST_LOG", "debug"}});
    ASSERT_TRUE(set.WaitForFocusedRow());
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(prepared->pid()) + "/cwd"),
              "/");
    set.screen().TypeKey("Escape");
    EXPECT_EQ(list->WaitForExit(), 0);
    EXPECT_EQ(list->Output(), VERSION_LINE);
    EXPECT_THAT(list->Errors(), HasSubstr("CheckVisibility returned true"));
    EXPECT_THAT(list->Errors(), HasSubstr("end efl main"));
    EXPECT_EQ(prepared->WaitForExit(), 0);
    EXPECT_EQ(prepared->Output(), "");
    EXPECT_THAT(prepared->Errors(), Not(HasSubstr("CheckVisibility")));
}

TEST_F(APreparedListIsReady, TakesTheKeys) {
    const auto list = Launch();
    ASSERT_TRUE(middleware->SeesSelected("a", "Alpha"));
    ASSERT_TRUE(set.WaitForFocusedRow());
    set.screen().TypeKey("Down");
    EXPECT_TRUE(middleware->SeesSelected("b", "Bravo"));
    set.screen().TypeKey("Return");
    EXPECT_TRUE(middleware->Sees("event 3 ItemClicked"));
    EXPECT_EQ(list->WaitForExit(), 0);
}

TEST_F(APreparedListIsReady, IsClosedByASecondStart) {
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    const auto next = Prepare();
    const auto second = Launch();
    EXPECT_EQ(second->WaitForExit(), 0);
    EXPECT_EQ(list->WaitForExit(), 0);
    EXPECT_EQ(next->WaitForExit(), 0);
    EXPECT_EQ(second->Output(), VERSION_LINE);
}

TEST_F(APreparedListIsReady, ReceivesTheSignalsOfItsLauncher) {
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    list->Signal(SIGTERM);
    EXPECT_EQ(list->WaitForExit(), 0);
    EXPECT_EQ(prepared->WaitForExit(), 0);
}

TEST_F(APreparedListIsReady, EndsWithItsLauncher) {
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    list->Signal(SIGKILL);
    EXPECT_EQ(prepared->WaitForExit(), 128 + SIGKILL);
    EXPECT_TRUE(set.WaitForNoWindow(Television::LIST));
}

TEST_F(APreparedListIsReady, ReturnsTheStatusOfAFailure) {
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    prepared->Signal(SIGKILL);
    EXPECT_EQ(list->WaitForExit(), 251);
    EXPECT_THAT(list->Errors(), HasSubstr("ended unexpectedly"));
}

// The program ends without releasing its memory, as any program that loses its display.
TEST_F(APreparedList, ReturnsTheStatusOfALostDisplay) {
    const auto prepared = Prepare({{"ASAN_OPTIONS", "detect_leaks=0"}});
    const auto list = Launch();
    ASSERT_TRUE(set.WaitForFocusedRow());
    set.screen().Stop();
    EXPECT_EQ(list->WaitForExit(), 101);
    EXPECT_EQ(prepared->WaitForExit(), 101);
}

TEST_F(APreparedListIsReady, IsThrownAwayByALaunchInAnotherLanguage) {
    const auto list = Launch({{"LANGUAGE", "it"}});
    EXPECT_TRUE(EndsUnused(*prepared)) << prepared->Errors();
    EXPECT_TRUE(set.WaitForFocusedRow());
    EXPECT_TRUE(list->WaitForText(VERSION_LINE));
}

TEST_F(APreparedListIsReady, IsThrownAwayByALaunchOnAnotherScreen) {
    const XDisplay other({"openbox", ""});
    const auto list = Launch({{"DISPLAY", other.Name()}});
    EXPECT_TRUE(EndsUnused(*prepared)) << prepared->Errors();
    EXPECT_TRUE(middleware->SeesSelected("a", "Alpha"));
}

TEST_F(APreparedListIsReady, IsThrownAwayWhenTheScreenChanges) {
    set.screen().Resize(1280, 720);
    EXPECT_TRUE(EndsUnused(*prepared)) << prepared->Errors();
}

TEST_F(APreparedListIsReady, IsThrownAwayWhenASettingChanges) {
    ASSERT_EQ(set.Configure({"set", "db/menu/accessibility/text-size", "int", "150"}), 0);
    EXPECT_TRUE(EndsUnused(*prepared)) << prepared->Errors();
}

TEST_F(APreparedListIsReady, IsThrownAwayWhenItsProgramIsReplaced) {
    prepared->Signal(SIGTERM);
    ASSERT_EQ(prepared->WaitForExit(), 0);
    const std::string copy = set.WriteFile("applist", "");
    std::filesystem::copy_file(BuiltProgram("applist"), copy,
                               std::filesystem::copy_options::overwrite_existing);
    const auto old = Start({copy, "--prepare"}, {{"APPLIST_LOG", "info"}});
    ASSERT_TRUE(old->WaitForText("is prepared")) << old->Errors();
    std::filesystem::remove(copy);
    const auto list = Launch();
    EXPECT_TRUE(EndsUnused(*old)) << old->Errors();
    EXPECT_TRUE(set.WaitForFocusedRow());
}

TEST_F(APreparedListIsReady, MayBeKilled) {
    prepared->Signal(SIGKILL);
    prepared->WaitForExit();
    const auto list = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    list->Signal(SIGTERM);
    EXPECT_EQ(list->WaitForExit(), 0);
    // It has left its socket behind.
    EXPECT_TRUE(std::filesystem::exists(SocketOf(set.Environment())));
    const auto next = Prepare();
    const auto again = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    again->Signal(SIGTERM);
    EXPECT_EQ(next->WaitForExit(), 0);
}

TEST_F(APreparedListIsReady, MayHang) {
    prepared->Signal(SIGSTOP);
    const auto list = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    prepared->Signal(SIGCONT);
    EXPECT_EQ(prepared->WaitForExit(), 0);
    EXPECT_EQ(prepared->Output(), "");
    list->Signal(SIGTERM);
    EXPECT_EQ(list->WaitForExit(), 0);
}

TEST_F(APreparedListIsReady, EndsOnASignalWithoutATrace) {
    prepared->Signal(SIGTERM);
    EXPECT_EQ(prepared->WaitForExit(), 0);
    EXPECT_FALSE(std::filesystem::exists(SocketOf(set.Environment())));
}

TEST_F(APreparedListIsReady, IsTheOnlyOne) {
    const auto second = Start({BuiltProgram("applist"), "--prepare"});
    EXPECT_EQ(second->WaitForExit(), 251);
    EXPECT_THAT(second->Errors(), HasSubstr("another process is prepared already"));
    const auto list = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    EXPECT_EQ(prepared->WaitForExit(0ms), std::nullopt);
}

// Each start finds a process that is prepared, one that is about to be, or none.
TEST_F(APreparedList, StartsManyTimesInARow) {
    const char* wanted = std::getenv("APPLIST_STARTS");
    const int starts = ParseNumber(wanted != nullptr ? wanted : "6").value();
    for (int start = 0; start < starts; ++start) {
        SCOPED_TRACE(start);
        const auto prepared = start % 3 == 0 ? Prepare() : nullptr;
        const auto preparing =
            start % 3 == 1 ? Start({BuiltProgram("applist"), "--prepare"}) : nullptr;
        const auto list = Launch();
        ASSERT_TRUE(set.WaitForFocusedRow()) << list->Errors();
        list->Signal(SIGTERM);
        ASSERT_EQ(list->WaitForExit(), 0);
        ASSERT_TRUE(set.WaitForNoWindow(Television::LIST));
    }
}

/// A peer of another user, who can reach the socket only because this test opens the folder to
/// all users.
class APreparedListAndAStranger : public APreparedList {
protected:
    void SetUp() override {
        if (geteuid() != 0) {
            GTEST_SKIP() << "NOT TESTED: programs of several users can be started by root only";
        }
        const auto folder = std::filesystem::path(SocketOf(set.Environment())).parent_path();
        for (const auto& path : {folder, folder.parent_path()}) {
            std::filesystem::permissions(path, std::filesystem::perms::all);
        }
    }
    std::unique_ptr<ChildProcess> StartStranger(const std::string& program) {
        return Start({"setpriv", "--reuid", "65534", "--regid", "65534", "--clear-groups",
                      "/usr/bin/python3", "-c", program, SocketOf(set.Environment())});
    }
};

constexpr const char* ASK = R"(
import array, socket, sys
peer = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
peer.connect(sys.argv[1])
try:
    peer.sendmsg([b'\1\0\0\0applist\0'], [(socket.SOL_SOCKET, socket.SCM_RIGHTS, array.array('i', [0, 1, 2, 0]))])
    print('answer', peer.recv(1))
except OSError:
    print("answer b''"))";

constexpr const char* ANSWER = R"(
import socket, sys
server = socket.socket(socket.AF_UNIX, socket.SOCK_SEQPACKET)
server.bind(sys.argv[1])
server.listen()
print('ready', flush=True)
print('request', server.accept()[0].recv(9)))";

TEST_F(APreparedListAndAStranger, DoNotTalkWhenTheStrangerAsks) {
    const auto prepared = Prepare();
    std::filesystem::permissions(SocketOf(set.Environment()), std::filesystem::perms::all);
    const auto stranger = StartStranger(ASK);
    EXPECT_EQ(stranger->WaitForExit(), 0) << stranger->Errors();
    EXPECT_EQ(stranger->Output(), "answer b''\n");
    const auto list = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    EXPECT_EQ(prepared->WaitForExit(0ms), std::nullopt);
}

TEST_F(APreparedListAndAStranger, DoNotTalkWhenTheStrangerAnswers) {
    const auto stranger = StartStranger(ANSWER);
    ASSERT_TRUE(stranger->WaitForText("ready")) << stranger->Errors();
    const auto list = Launch();
    EXPECT_TRUE(set.WaitForFocusedRow());
    EXPECT_EQ(stranger->WaitForExit(), 0) << stranger->Errors();
    EXPECT_EQ(stranger->Output(), "ready\nrequest b''\n");
}

}  // namespace
}  // namespace applist::test
