// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "SampleProcess.h"
#include "support/PrivateBus.h"

namespace applist::test {
namespace {

constexpr const char* LAUNCH = "launch org.vantu.port-sample";

ChildProcess::Environment SessionBus(const std::string& address) {
    return {{"DBUS_SESSION_BUS_ADDRESS", address}};
}

/// A bus that accepts connections and never answers.
class SilentBus {
public:
    SilentBus() : m_socket(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        Path().copy(address.sun_path, sizeof(address.sun_path) - 1);
        bind(m_socket, reinterpret_cast<sockaddr*>(&address), sizeof(address));
        listen(m_socket, 8);
    }
    ~SilentBus() { close(m_socket); }
    SilentBus(const SilentBus&) = delete;
    SilentBus& operator=(const SilentBus&) = delete;

    std::string Path() const { return m_folder.path() / "bus"; }

private:
    TemporaryDir m_folder;
    int m_socket;
};

TEST(SingleInstance, HandsTheValuesOfALaunchOverInTheirOrder) {
    const PrivateBus bus;
    SampleProcess first({"--no-window"}, SessionBus(bus.Address()));
    ASSERT_TRUE(first.WaitForLines(LAUNCH, 1));
    SampleProcess second({"--no-window", "--extra", "type=x", "--extra", "text=y"},
                         SessionBus(bus.Address()));
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_TRUE(first.WaitForLines(std::string(LAUNCH) + " type=x text=y", 1));
}

TEST(SingleInstance, TakesTheLaunchActionFromAnyProgram) {
    const PrivateBus bus;
    SampleProcess first({"--no-window"}, SessionBus(bus.Address()));
    ASSERT_TRUE(first.WaitForLines(LAUNCH, 1));
    ChildProcess call({"gdbus", "call", "--address", bus.Address(), "--dest",
                       "org.vantu.port-sample", "--object-path", "/org/vantu/port_sample",
                       "--method", "org.freedesktop.Application.ActivateAction", "launch",
                       "[<{'key': 'value'}>]", "{}"});
    EXPECT_EQ(call.WaitForExit(), 0) << call.Errors();
    EXPECT_TRUE(first.WaitForLines(std::string(LAUNCH) + " key=value", 1));
}

TEST(SingleInstance, WaitsForTheBussRequestWhenTheBusStartedIt) {
    const PrivateBus bus;
    SampleProcess service({"--no-window", "--gapplication-service"}, SessionBus(bus.Address()));
    ASSERT_TRUE(service.WaitForText("create\n"));
    SampleProcess launch({"--no-window", "--extra", "text=y"}, SessionBus(bus.Address()));
    EXPECT_EQ(launch.WaitForExit(), 0);
    EXPECT_TRUE(service.WaitForLines(std::string(LAUNCH) + " text=y", 1));
    EXPECT_EQ(service.Count(LAUNCH), 0);
}

TEST(SingleInstance, EachStartStandsAloneWithoutASessionBus) {
    SampleProcess first({"--no-window"}, {{"APPLIST_LOG", "info"}});
    SampleProcess second({"--no-window"}, {{"APPLIST_LOG", "info"}});
    EXPECT_TRUE(first.WaitForLines(LAUNCH, 1));
    EXPECT_TRUE(second.WaitForLines(LAUNCH, 1));
    EXPECT_TRUE(first.WaitForText(
        "No session bus; org.vantu.port-sample does not detect other instances\n"));
}

TEST(SingleInstance, StandsAloneAndSaysSoWhenTheSessionBusIsGone) {
    SampleProcess sample({"--no-window"}, SessionBus("unix:path=/nonexistent/bus"));
    EXPECT_TRUE(sample.WaitForLines(LAUNCH, 1));
    EXPECT_TRUE(sample.WaitForText(
        "Cannot connect to the session bus; org.vantu.port-sample does not detect other instances: "
        "[1] Could not connect: No such file or directory\n"));
}

TEST(SingleInstance, DoesNotHangWhenTheSessionBusIsSilent) {
    const SilentBus bus;
    SampleProcess sample({"--no-window"}, SessionBus("unix:path=" + bus.Path()));
    EXPECT_TRUE(sample.WaitForLines(LAUNCH, 1));
    EXPECT_TRUE(sample.WaitForText(
        "Cannot connect to the session bus; org.vantu.port-sample does not detect other instances: "
        "[19] Operation was cancelled\n"));
}

TEST(SingleInstance, LeavesItsLaunchForAFirstInstanceThatIsStuck) {
    const PrivateBus bus;
    SampleProcess first({"--no-window"}, SessionBus(bus.Address()));
    ASSERT_TRUE(first.WaitForLines(LAUNCH, 1));
    first.Process().Signal(SIGSTOP);
    SampleProcess second({"--no-window", "--extra", "text=y"}, SessionBus(bus.Address()));
    EXPECT_EQ(second.WaitForExit(), 0);
    EXPECT_EQ(second.Output(), "result 0\n");
    EXPECT_EQ(first.Count(LAUNCH), 1);
    first.Process().Signal(SIGCONT);
    EXPECT_TRUE(first.WaitForLines(std::string(LAUNCH) + " text=y", 1));
}

TEST(SingleInstance, OutlivesTheSessionBus) {
    PrivateBus bus;
    SampleProcess sample({"--no-window", "--watch-bus"}, SessionBus(bus.Address()));
    ASSERT_TRUE(sample.WaitForLines(LAUNCH, 1));
    bus.Stop();
    EXPECT_TRUE(sample.WaitForLines("still here", 1));
    EXPECT_EQ(sample.Count("terminate"), 0);
}

}  // namespace
}  // namespace applist::test
