// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// Launch requests between real processes. The sender is platformctl, which ends as soon as it has
// sent the request, so these tests also show that delivery does not depend on the sender.

#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* ID = "org.vantu.test-receiver";
constexpr int NOT_LAUNCHED = 1;

// A home folder with one installed application, whose lines arrive through a named pipe.
class Launch : public testing::Test {
protected:
    Launch() {
        fs::create_directories(Data() / "dbus-1" / "services");
        fs::create_directories(Data() / "applications");
        fs::create_directories(m_folder.path() / "run");
        EXPECT_EQ(mkfifo((m_folder.path() / "lines").c_str(), S_IRUSR | S_IWUSR), 0);
        m_lines = std::make_unique<ChildProcess>(
            std::vector<std::string>{"tail", "-n", "+1", "-f", m_folder.path() / "lines"});
    }

    fs::path Data() const { return m_folder.path() / "data"; }
    static std::string Receiver() { return TestProgram("launch-receiver"); }
    void InstallService(const std::string& id, const std::string& command) const {
        std::ofstream(Data() / "dbus-1" / "services" / (id + ".service"))
            << "[D-BUS Service]\nName=" << id << "\nExec=" << command << "\n";
    }
    void InstallReceiver() const {
        InstallService(ID, Receiver() + " " + ID + " --gapplication-service");
    }
    void InstallEntry(const std::string& command) const {
        std::ofstream(Data() / "applications" / (std::string(ID) + ".desktop"))
            << "[Desktop Entry]\nType=Application\nName=Receiver\nExec=" << command << "\n";
    }

    ChildProcess::Environment Home() const {
        return {{"HOME", m_folder.path()},
                {"DISPLAY", std::nullopt},
                {"DBUS_SESSION_BUS_ADDRESS", std::nullopt},
                {"XDG_RUNTIME_DIR", m_folder.path() / "run"},
                {"XDG_DATA_HOME", Data()},
                {"XDG_DATA_DIRS", Data()},
                {"LAUNCH_LINES", m_folder.path() / "lines"}};
    }

    // Runs a sender in that environment and returns its exit status; stores its log.
    int Send(const ChildProcess::Environment& environment,
             const std::vector<std::string>& request) {
        std::vector<std::string> command{BuiltProgram("platformctl"), "launch"};
        command.insert(command.end(), request.begin(), request.end());
        ChildProcess sender(command, environment);
        const int status = sender.WaitForExit().value_or(-1);
        log = sender.Errors();
        return status;
    }

    bool Receives(const std::string& text) { return m_lines->WaitForText(text); }
    const std::string& Received() const { return m_lines->Output(); }

    std::string log;

private:
    TemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_lines;
};

class LaunchOnABus : public Launch {
protected:
    int Send(const std::vector<std::string>& request) {
        ChildProcess::Environment environment = Home();
        environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
        for (const auto& [name, value] : bus.Environment()) {
            environment[name] = value;
        }
        return Launch::Send(environment, request);
    }

    SessionBus bus{Home()};
};

TEST_F(LaunchOnABus, StartsTheApplicationAndHandsItTheExtraDataInOrder) {
    InstallReceiver();
    EXPECT_EQ(Send({ID, "text=$(touch x) \"è\" 'b' `c` ; & \\", "type=x", "a="}), 0) << log;
    EXPECT_TRUE(Receives("bus text=$(touch x) \"è\" 'b' `c` ; & \\;type=x;a=;\n")) << Received();
}

TEST_F(LaunchOnABus, HandsARunningApplicationTheNextRequest) {
    InstallReceiver();
    EXPECT_EQ(Send({ID, "n=1"}), 0) << log;
    ASSERT_TRUE(Receives("bus n=1;\n"));
    EXPECT_EQ(Send({ID, "n=2"}), 0) << log;
    ASSERT_TRUE(Receives("bus n=2;\n"));
    const std::string first = Received().substr(0, Received().find(' '));
    EXPECT_THAT(Received(), HasSubstr("\n" + first + " bus n=2;\n"));
}

TEST_F(LaunchOnABus, FailsForAnUnknownApplication) {
    EXPECT_EQ(Send({"org.vantu.nobody", "text=Hello"}), NOT_LAUNCHED);
    EXPECT_THAT(log, HasSubstr("Cannot launch org.vantu.nobody: no such application is installed"));
}

TEST_F(LaunchOnABus, FailsForAnApplicationWhoseProgramIsMissing) {
    InstallService(ID, "/nonexistent/program");
    EXPECT_EQ(Send({ID, "text=Hello"}), NOT_LAUNCHED);
    EXPECT_THAT(log, HasSubstr(std::string("Cannot start ") + ID + " over the bus: ["));
}

TEST_F(LaunchOnABus, StartsTheInstalledProgramIfItsServiceIsSlow) {
    InstallService(ID, "/bin/sleep 20");
    InstallEntry(Receiver());
    EXPECT_EQ(Send({ID, "text=Hello"}), 0) << log;
    EXPECT_TRUE(Receives("start text=Hello;\n"));
}

TEST_F(LaunchOnABus, StartsTheInstalledProgramIfTheBusDoesNotAnswer) {
    InstallEntry(Receiver());
    bus.daemon().Signal(SIGSTOP);
    EXPECT_EQ(Send({ID, "text=Hello"}), 0) << log;
    bus.daemon().Signal(SIGCONT);
    EXPECT_TRUE(Receives("start text=Hello;\n"));
    EXPECT_THAT(log, HasSubstr("No session bus to launch over: ["));
}

TEST_F(LaunchOnABus, StartsAnInstalledProgramThatTheBusDoesNotKnow) {
    InstallEntry("\"" + Receiver() + "\" %U");
    EXPECT_EQ(Send({ID, "text=Hello"}), 0) << log;
    EXPECT_TRUE(Receives("start text=Hello;\n"));
}

using LaunchWithoutABus = Launch;

TEST_F(LaunchWithoutABus, StartsTheInstalledProgramWithTheExtraDataInOrder) {
    InstallEntry(Receiver());
    EXPECT_EQ(Send(Home(), {ID, "text=$(touch x) \"è\"", "type=a=b", "c="}), 0) << log;
    EXPECT_TRUE(Receives("start text=$(touch x) \"è\";type=a=b;c=;\n"));
}

// The command's placeholder for files is dropped, because a launch request does not carry files.
TEST_F(LaunchWithoutABus, KeepsTheWordsOfTheInstalledCommandInFront) {
    InstallEntry("\"" + Receiver() + "\" --extra \"own=1 2\" %u");
    EXPECT_EQ(Send(Home(), {ID, "text=Hello"}), 0) << log;
    EXPECT_TRUE(Receives("start own=1 2;text=Hello;\n")) << Received();
}

TEST_F(LaunchWithoutABus, FailsForAnUnknownApplicationAndForOneWhoseProgramIsMissing) {
    for (const bool known : {false, true}) {
        if (known) {
            InstallEntry("/nonexistent/program");
        }
        EXPECT_EQ(Send(Home(), {ID, "text=Hello"}), NOT_LAUNCHED);
        EXPECT_THAT(
            log, HasSubstr(std::string("platformctl: application '") + ID + "' was not launched"));
        EXPECT_THAT(log, HasSubstr(std::string("Cannot launch ") + ID));
    }
}

TEST_F(LaunchWithoutABus, StartsTheInstalledProgramWhereTheBusIsGone) {
    InstallEntry(Receiver());
    ChildProcess::Environment environment = Home();
    environment["DBUS_SESSION_BUS_ADDRESS"] = "unix:path=/nonexistent/bus";
    EXPECT_EQ(Send(environment, {ID, "text=Hello"}), 0) << log;
    EXPECT_TRUE(Receives("start text=Hello;\n"));
    EXPECT_THAT(log, HasSubstr("No session bus to launch over: ["));
}

}  // namespace
}  // namespace applist::test
