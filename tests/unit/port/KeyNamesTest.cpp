// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "display/KeyNames.h"

namespace applist::desktop {
namespace {

TEST(KeyNames, EscapeIsBack) {
    EXPECT_STREQ(RemoteControlKey("Escape"), "XF86Back");
}

TEST(KeyNames, TheTenthFunctionKeyIsExit) {
    EXPECT_STREQ(RemoteControlKey("F10"), "XF86Exit");
}

TEST(KeyNames, AnExitKeyWithoutAnXNameIsExit) {
    EXPECT_STREQ(RemoteControlKey("Keycode-182"), "XF86Exit");
}

TEST(KeyNames, EveryOtherKeyKeepsItsName) {
    for (const char* key : {"Up", "Down", "Left", "Right", "Return", "XF86Back", "XF86Exit", "F1",
                            "escape", "Keycode-18", "Keycode-1820", ""}) {
        EXPECT_EQ(RemoteControlKey(key), nullptr) << key;
    }
}

}  // namespace
}  // namespace applist::desktop
