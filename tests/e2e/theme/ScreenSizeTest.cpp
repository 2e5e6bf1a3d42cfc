// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Screens of other sizes than the one that the list is drawn for.
#include <cstdlib>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

constexpr uint32_t PANEL = 0x12161C;

// A colour that is scaled may be a step off.
bool IsPanel(uint32_t colour) {
    for (const unsigned shift : {0U, 8U, 16U}) {
        const int difference =
            static_cast<int>(colour >> shift & 0xFFU) - static_cast<int>(PANEL >> shift & 0xFFU);
        if (std::abs(difference) > 1) {
            return false;
        }
    }
    return true;
}

struct Screen {
    Desktop desktop;
    int width;
    int height;
};

class AScreen : public testing::TestWithParam<Screen> {
protected:
    void SetUp() override {
        for (const std::vector<std::string>& setting :
             {std::vector<std::string>{"region", "italy"},
              {"set", "memory/tv-viewer/data_service", "int", "2"},
              {"set", "db/menu/broadcasting/autorun-dataservice", "bool", "0"},
              {"set", "memory/javamw/autostart-app", "int", "0"}}) {
            std::vector<std::string> command{BuiltProgram("platformctl")};
            command.insert(command.end(), setting.begin(), setting.end());
            ASSERT_EQ(ChildProcess(command, Environment()).WaitForExit(), 0);
        }
    }
    // No bus: the list stays empty.
    ChildProcess::Environment Environment() const {
        ChildProcess::Environment environment = display.Environment();
        environment["HOME"] = folder.path();
        environment["XDG_RUNTIME_DIR"] = folder.path();
        environment["APPLIST_PLATFORM_ROOT"] = folder.path() / "set";
        environment["DBUS_SYSTEM_BUS_ADDRESS"] = "unix:path=" + (folder.path() / "none").string();
        environment["DBUS_SESSION_BUS_ADDRESS"] = std::nullopt;
        return environment;
    }
    // What stands at a share of the screen's width and height.
    uint32_t At(double x, double y) const {
        return display.Pixel(static_cast<int>(x * GetParam().width),
                             static_cast<int>(y * GetParam().height));
    }

    TemporaryDir folder;
    XDisplay display{GetParam().desktop};
};

// At the middle of each side, a hundredth inside and outside of the panel's edges.
TEST_P(AScreen, ShowsThePanelInItsMiddleAtItsProportions) {
    constexpr double HALF_WIDTH = 816.0 / 1920 / 2;
    constexpr double HALF_HEIGHT = 730.0 / 1080 / 2;
    constexpr double BIT = 0.01;
    const ChildProcess application({BuiltProgram("applist")}, Environment());
    ASSERT_TRUE(display.WaitUntil([this] { return IsPanel(At(0.5, 0.5)); }));
    EXPECT_TRUE(display.WaitUntil([this] {
        return IsPanel(At(0.5 - HALF_WIDTH + BIT, 0.5)) &&
               IsPanel(At(0.5 + HALF_WIDTH - BIT, 0.5)) &&
               IsPanel(At(0.5, 0.5 - HALF_HEIGHT + BIT)) &&
               IsPanel(At(0.5, 0.5 + HALF_HEIGHT - BIT));
    }));
    const uint32_t around = At(BIT, BIT);
    EXPECT_FALSE(IsPanel(around));
    EXPECT_EQ(At(0.5 - HALF_WIDTH - BIT, 0.5), around);
    EXPECT_EQ(At(0.5 + HALF_WIDTH + BIT, 0.5), around);
    EXPECT_EQ(At(0.5, 0.5 - HALF_HEIGHT - BIT), around);
    EXPECT_EQ(At(0.5, 0.5 + HALF_HEIGHT + BIT), around);
}

INSTANTIATE_TEST_SUITE_P(Screens, AScreen,
                         testing::Values(Screen{{"openbox", "picom", "1280x720"}, 1280, 720},
                                         Screen{{"", "picom", "1280x720"}, 1280, 720},
                                         Screen{{"openbox", "picom", "1920x1080"}, 1920, 1080},
                                         Screen{{"openbox", "picom", "3840x2160"}, 3840, 2160},
                                         Screen{{"", "picom", "3840x2160"}, 3840, 2160}),
                         [](const auto& screen) {
                             return "Height" + std::to_string(screen.param.height) +
                                    (screen.param.desktop.windowManager.empty() ? "Unmanaged"
                                                                                : "Managed");
                         });

}  // namespace
}  // namespace applist::test
