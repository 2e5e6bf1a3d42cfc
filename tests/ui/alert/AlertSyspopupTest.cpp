// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// The program on a screen, launched over a session bus as other programs launch it.

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::HasSubstr;

constexpr const char* ID = "org.vantu.alert-syspopup";
// The badge colour of each kind.
constexpr uint32_t INFORM = 0x76B4FF;
constexpr uint32_t WARN = 0xFFB040;

class AlertSyspopup : public testing::Test {
protected:
    void Launch(const std::vector<std::string>& extraData) {
        std::vector<std::string> command{"launch", ID};
        command.insert(command.end(), extraData.begin(), extraData.end());
        EXPECT_EQ(set.Configure(command), 0);
    }
    /// Starts the program without a session bus.
    ChildProcess StartAlone(const std::vector<std::string>& extraData,
                            const std::optional<std::string>& log) {
        std::vector<std::string> command{BuiltProgram(ID)};
        for (const std::string& value : extraData) {
            command.insert(command.end(), {"--extra", value});
        }
        auto environment = set.Environment();
        environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
        environment["APPLIST_LOG"] = log;
        return ChildProcess(command, environment);
    }
    bool Shows(uint32_t badge) { return set.screen().WaitForColour(badge); }
    bool GetsKeys() { return set.WaitForWindow(Television::ALERT_POPUP); }
    ChildProcess& bus() { return set.sessionBus().daemon(); }

    Television set{{{"LANGUAGE", "it"}, {"APPLIST_LOG", "debug"}}, {"openbox", ""}};
};

TEST_F(AlertSyspopup, ShowsANotificationUntilAKeyClosesIt) {
    Launch({"text=Ciao", "type=notification"});
    EXPECT_TRUE(Shows(INFORM)) << bus().Errors();
    EXPECT_FALSE(set.screen().Shows(WARN));
    ASSERT_TRUE(GetsKeys());
    set.screen().TypeKey("F10");
    // The alert must close because of the key, not after its time limit.
    EXPECT_TRUE(bus().WaitForText("Closed by the key XF86Exit"));
    EXPECT_TRUE(set.WaitForNoWindow(Television::ALERT_POPUP));
}

TEST_F(AlertSyspopup, ShowsWhatItsArgumentsSayWithoutASessionBus) {
    ChildProcess alert = StartAlone({"text=Ciao", "type=unavailable"}, "debug");
    ASSERT_TRUE(Shows(WARN)) << alert.Errors();
    ASSERT_TRUE(GetsKeys());
    set.screen().TypeKey("Escape");
    EXPECT_EQ(alert.WaitForExit(), 0) << alert.Errors();
    EXPECT_THAT(alert.Errors(), HasSubstr("Closed by the key XF86Back"));
}

TEST_F(AlertSyspopup, SaysNothingOnStandardErrorUnlessAsked) {
    ChildProcess alert = StartAlone({"text=Ciao"}, std::nullopt);
    ASSERT_TRUE(GetsKeys()) << alert.Errors();
    set.screen().TypeKey("Return");
    EXPECT_EQ(alert.WaitForExit(), 0);
    EXPECT_EQ(alert.Errors(), "");
}

}  // namespace
}  // namespace applist::test
