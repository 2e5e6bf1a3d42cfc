// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

TEST(ApplicationId, IsTheProgramsNameInOurDomain) {
    EXPECT_EQ(ApplicationIdOf("applist"), "org.vantu.applist");
}

TEST(ApplicationId, LeavesTheFolderOut) {
    EXPECT_EQ(ApplicationIdOf("/usr/bin/alert-syspopup"), "org.vantu.alert-syspopup");
    EXPECT_EQ(ApplicationIdOf("./build/bin/applist"), "org.vantu.applist");
}

TEST(ApplicationId, IsEmptyForANameThatTheBusCannotCarry) {
    EXPECT_EQ(ApplicationIdOf(""), "");
    EXPECT_EQ(ApplicationIdOf("/usr/bin/"), "");
    EXPECT_EQ(ApplicationIdOf("7zip"), "");
    EXPECT_EQ(ApplicationIdOf("app list"), "");
    EXPECT_EQ(ApplicationIdOf(std::string(300, 'a')), "");
}

}  // namespace
}  // namespace applist::desktop
