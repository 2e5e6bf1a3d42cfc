// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The bus policy that the installation contains.
#include <gmock/gmock.h>

#include "unit/install/InstalledData.h"

namespace applist::test {
namespace {

using testing::HasSubstr;

class InstalledBusPolicy : public InstalledData {};

TEST_F(InstalledBusPolicy, IsInstalledForTheSystemBusAndNamesBothUsers) {
    const std::string policy = Content("/usr/share/dbus-1/system.d/org.vantu.applist.conf");
    EXPECT_THAT(policy, HasSubstr("<policy user=\"" APPLIST_USER "\">"));
    EXPECT_THAT(policy, HasSubstr("<policy user=\"" APPLIST_MIDDLEWARE_USER "\">"));
}

// The policy files of a developer's buses, which allow everything.
TEST_F(InstalledBusPolicy, IsNotThatOfADeveloper) {
    EXPECT_THAT(FilesNamed("developer"), testing::IsEmpty());
    EXPECT_THAT(FilesNamed("org.vantu.applist.conf"),
                testing::ElementsAre("/usr/share/dbus-1/system.d/org.vantu.applist.conf"));
}

}  // namespace
}  // namespace applist::test
