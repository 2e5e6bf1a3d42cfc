// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The application, its middleware and a stranger, each run as a separate user on a bus with the
// installed policy. The stranger's forged messages must not reach the others. On a bus that allows
// everything the same messages have an effect, which shows that these tests can fail.
#include <algorithm>
#include <csignal>
#include <fstream>

#include <gmock/gmock.h>

#include "support/PolicyBus.h"
#include "support/XDisplay.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

const std::string PATH = CHANNEL_PATH;
const std::string INTERFACE = CHANNEL_INTERFACE;

constexpr const char* THREE_ITEMS = "a\tAlpha\nb\tBravo\nc\tCharlie\n";

/// A set whose programs run as different users, with the list filled.
class Set {
public:
    Set(PolicyBus::Daemon daemon, const std::string& rules, const std::string& policyFile)
        : m_bus(daemon, rules, policyFile) {
        for (const std::vector<std::string>& setting : SETTINGS) {
            EXPECT_EQ(Run(APPLICATION_USER, setting).status, 0);
        }
        const std::string items = m_bus.FolderOf(MIDDLEWARE_USER, "items") + "/items";
        std::ofstream(items) << THREE_ITEMS;
        m_application = m_bus.Start(APPLICATION_USER, {"applist"}, Environment());
        m_middleware = m_bus.Start(MIDDLEWARE_USER, {"javamw-sim", "serve", "--items", items});
        EXPECT_TRUE(m_middleware->WaitForText("event 2 ItemSelected"))
            << m_middleware->Output() << m_middleware->Errors() << m_application->Errors();
    }

    struct Result {
        int status;
        std::string output;
    };
    /// Runs a program and returns its exit status and output.
    Result Run(const User& user, const std::vector<std::string>& argv) const {
        const auto process = m_bus.Start(user, argv, Environment());
        const int status = process->WaitForExit().value_or(-1);
        return {status, process->Output()};
    }

    /// The list's items, as the middleware reads them.
    std::string List() const {
        return Run(MIDDLEWARE_USER, {"javamw-sim", "call", "GetAllItems"}).output;
    }

    /// Ends the application and returns its whole log.
    const std::string& EndAndReadLog() {
        m_application->Signal(SIGTERM);
        EXPECT_EQ(m_application->WaitForExit(), 0);
        return m_application->Errors();
    }
    ChildProcess& application() { return *m_application; }
    ChildProcess& middleware() { return *m_middleware; }
    XDisplay& screen() { return m_screen; }
    const PolicyBus& bus() const { return m_bus; }

    /// The application's unique name, which any program on a bus can find out.
    std::string ApplicationName() const {
        const std::string& line = m_middleware->Output();
        return line.substr(line.find(':'), line.find('\n') - line.find(':'));
    }

private:
    static inline const std::vector<std::vector<std::string>> SETTINGS{
        {"platformctl", "region", "italy"},
        {"platformctl", "set", "memory/tv-viewer/data_service", "int", "2"},
        {"platformctl", "set", "db/menu/broadcasting/autorun-dataservice", "bool", "0"},
        {"platformctl", "set", "memory/javamw/autostart-app", "int", "0"},
    };

    ChildProcess::Environment Environment() const {
        ChildProcess::Environment environment = m_screen.Environment();
        environment["HOME"] = m_home;
        environment["TMPDIR"] = m_home;
        environment["XDG_RUNTIME_DIR"] = m_home;
        environment["XDG_CONFIG_HOME"] = std::nullopt;
        environment["XDG_DATA_HOME"] = std::nullopt;
        environment["XDG_DATA_DIRS"] = m_bus.Share();
        environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
        environment["APPLIST_PLATFORM_ROOT"] = m_home + "/set";
        environment["APPLIST_LOG"] = "debug";
        environment["LC_ALL"] = "C.UTF-8";
        return environment;
    }

    PolicyBus m_bus;
    XDisplay m_screen{{"openbox", ""}};
    std::string m_home = m_bus.FolderOf(APPLICATION_USER, "home");
    std::unique_ptr<ChildProcess> m_application;
    std::unique_ptr<ChildProcess> m_middleware;
};

// The theme's colour of the focused row.
constexpr uint32_t FOCUS_COLOUR = 0xFFD140;

/// Tries to act as a middleware: requests the names of the handshake, calls the
/// application to empty the list, and sends one signal to the application and one to all.
class Forger {
public:
    Forger(const Set& set, const User& user)
        : m_actor(set.bus(), user, Commands(set.ApplicationName())), m_lines(m_actor.Lines()) {}

    /// The number of denials, out of six names and calls.
    long Denials() const {
        return std::count_if(m_lines.begin(), m_lines.end(), [](const std::string& line) {
            return line.find("Error.AccessDenied") != std::string::npos;
        });
    }
    const std::string& UniqueName() const { return m_actor.UniqueName(); }

private:
    static std::vector<std::string> Commands(const std::string& application) {
        return {"own",       "org.vantu.JavaMW.Applist_CLIENT_SYN",
                "own",       "org.vantu.JavaMW.Applist_CLIENT_SYN_ACK",
                "own",       "org.vantu.JavaMW.Applist_CLIENT_ACK",
                "call",      application,
                PATH,        INTERFACE,
                "Send",      "call",
                application, PATH,
                "-",         "Send",
                "call",      application,
                PATH,        "org.freedesktop.DBus.Peer",
                "Ping",      "signal",
                application, PATH,
                INTERFACE,   "SendSignal",
                "signal",    "-",
                PATH,        INTERFACE,
                "SendSignal"};
    }

    Actor m_actor;
    std::vector<std::string> m_lines;
};

class Forgery : public testing::TestWithParam<PolicyBus::Daemon> {
protected:
    void SetUp() override { SkipUnlessRoot(); }
};
INSTANTIATE_TEST_SUITE_P(On, Forgery,
                         testing::Values(PolicyBus::Daemon::DBUS_DAEMON,
                                         PolicyBus::Daemon::DBUS_BROKER),
                         [](const auto& daemon) { return NameOf(daemon.param); });

TEST_P(Forgery, OfAStrangerReachesNothingAndTheViewerNoticesNothing) {
    Set set(GetParam(), PolicyBus::USUAL_RULES, BUS_POLICY);
    const Forger stranger(set, STRANGER);
    EXPECT_EQ(stranger.Denials(), 6);
    EXPECT_EQ(set.List(), THREE_ITEMS);
    ASSERT_TRUE(set.screen().WaitUntil([&] {
        return set.screen().HasKeyboard("org.vantu.applist") && set.screen().Shows(FOCUS_COLOUR);
    }));
    set.screen().TypeKey("Right");
    EXPECT_TRUE(set.middleware().WaitForText("event 2 ItemSelected selection b\tBravo"));
    set.screen().TypeKey("Return");
    EXPECT_TRUE(set.middleware().WaitForText("event 3 ItemClicked"));
    EXPECT_EQ(set.application().WaitForExit(), 0);
    // The application has not received anything from the stranger: its log does not contain the
    // name. Its own messages are not denied.
    EXPECT_THAT(set.application().Errors(), Not(HasSubstr(stranger.UniqueName())));
    EXPECT_THAT(set.application().Errors(), Not(HasSubstr("AccessDenied")));
}

TEST_P(Forgery, OfAStrangerDoesItsDamageWhereEverythingIsAllowed) {
    Set set(GetParam(), PolicyBus::OPEN_RULES, "");
    const Forger stranger(set, STRANGER);
    EXPECT_EQ(stranger.Denials(), 0);
    EXPECT_EQ(set.List(), "");
    const std::string log = set.EndAndReadLog();
    EXPECT_THAT(log, HasSubstr("Monitor unique name " + stranger.UniqueName()));
    EXPECT_THAT(log, HasSubstr("cb_MethodCall sender=" + stranger.UniqueName()));
    EXPECT_THAT(log, HasSubstr("cb_SignalCall sender=" + stranger.UniqueName()));
}

}  // namespace
}  // namespace applist::test
