// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// The program on a screen, launched over a session bus as other programs launch it.

#include <filesystem>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/ChildProcess.h"
#include "support/SessionBus.h"
#include "support/TemporaryDir.h"
#include "support/XDisplay.h"

namespace applist::test {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* ID = "org.vantu.alert-syspopup";
constexpr const char* REFUSAL = "Launch request refused: its extra data does not contain \"text\"";
// The badge colour of each kind.
constexpr uint32_t INFORM = 0x76B4FF;
constexpr uint32_t WARN = 0xFFB040;

class AlertSyspopup : public testing::Test {
protected:
    AlertSyspopup() {
        fs::create_directories(m_home.path() / "run");
        fs::permissions(m_home.path() / "run", fs::perms::owner_all);
        m_bus = std::make_unique<SessionBus>(Environment());
    }

    // A desktop with only the build's applications.
    ChildProcess::Environment Environment() const {
        ChildProcess::Environment environment = screen.Environment();
        environment["HOME"] = m_home.path();
        environment["TMPDIR"] = m_home.path();
        environment["XDG_RUNTIME_DIR"] = m_home.path() / "run";
        environment["XDG_DATA_HOME"] = m_home.path();
        environment["XDG_DATA_DIRS"] = BuiltProgram("../share");
        environment["XDG_CONFIG_HOME"] = std::nullopt;
        environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
        environment["LC_ALL"] = "C.UTF-8";
        environment["LANGUAGE"] = "it";
        environment["APPLIST_LOG"] = "debug";
        return environment;
    }

    void Launch(const std::vector<std::string>& extraData) {
        std::vector<std::string> command{BuiltProgram("platformctl"), "launch", ID};
        command.insert(command.end(), extraData.begin(), extraData.end());
        ChildProcess::Environment environment = m_bus->Environment();
        environment.merge(Environment());
        ChildProcess sender(command, environment);
        EXPECT_EQ(sender.WaitForExit(), 0) << sender.Errors();
    }

    bool Shows(uint32_t badge) {
        return screen.WaitUntil([&] { return screen.Shows(badge); });
    }
    bool GetsKeys() {
        return screen.WaitUntil([this] {
            const XlibWindow window = screen.WindowTitled(ID);
            return window != 0 && screen.FocusedWindow() == window;
        });
    }
    bool IsGone() {
        return screen.WaitUntil([this] { return screen.WindowTitled(ID) == 0; });
    }
    ChildProcess& bus() { return m_bus->daemon(); }

    XDisplay screen{{"openbox", ""}};

private:
    TemporaryDir m_home;
    std::unique_ptr<SessionBus> m_bus;
};

TEST_F(AlertSyspopup, ShowsANotificationUntilAKeyClosesIt) {
    Launch({"text=Ciao", "type=notification"});
    EXPECT_TRUE(Shows(INFORM)) << bus().Errors();
    EXPECT_FALSE(screen.Shows(WARN));
    ASSERT_TRUE(GetsKeys());
    screen.TypeKey("F10");
    // The alert must close because of the key, not after its time limit.
    EXPECT_TRUE(bus().WaitForText("Closed by the key XF86Exit"));
    EXPECT_TRUE(IsGone());
}

TEST_F(AlertSyspopup, RefusesARequestWithoutAText) {
    Launch({"type=notification"});
    EXPECT_TRUE(bus().WaitForText(REFUSAL)) << bus().Errors();
    EXPECT_EQ(screen.WindowTitled(ID), 0U);
}

TEST_F(AlertSyspopup, ShowsWhatItsArgumentsSayWithoutASessionBus) {
    ChildProcess alert({BuiltProgram(ID), "--extra", "text=Ciao", "--extra", "type=unavailable"},
                       Environment());
    ASSERT_TRUE(Shows(WARN)) << alert.Errors();
    ASSERT_TRUE(GetsKeys());
    screen.TypeKey("Escape");
    EXPECT_EQ(alert.WaitForExit(), 0) << alert.Errors();
    EXPECT_THAT(alert.Errors(), HasSubstr("Closed by the key XF86Back"));
}

TEST_F(AlertSyspopup, SaysNothingOnStandardErrorUnlessAsked) {
    ChildProcess::Environment environment = Environment();
    environment["APPLIST_LOG"] = std::nullopt;
    ChildProcess alert({BuiltProgram(ID), "--extra", "text=Ciao"}, environment);
    ASSERT_TRUE(GetsKeys()) << alert.Errors();
    screen.TypeKey("Return");
    EXPECT_EQ(alert.WaitForExit(), 0);
    EXPECT_EQ(alert.Errors(), "");
}

}  // namespace
}  // namespace applist::test
