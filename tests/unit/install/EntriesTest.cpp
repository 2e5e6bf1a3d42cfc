// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The desktop entries and services of the programs, installed with a prefix other than the
// configured one.
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "unit/install/InstalledData.h"

namespace applist::test {
namespace {

using testing::HasSubstr;

class InstalledEntries : public InstalledData {};

TEST_F(InstalledEntries, StartTheProgramsOfTheirOwnPrefix) {
    const std::pair<std::string, std::string> programs[] = {
        {"org.vantu.applist", INSTALLED_BIN "/applist"},
        {"org.vantu.alert-syspopup", INSTALLED_LIBEXEC "/org.vantu.alert-syspopup"}};
    for (const auto& [id, program] : programs) {
        const std::string start = "\nExec=\"" + program + "\"";
        EXPECT_THAT(Content("/usr/share/applications/" + id + ".desktop"), HasSubstr(start + "\n"));
        EXPECT_THAT(Content("/usr/share/dbus-1/services/" + id + ".service"),
                    HasSubstr(start + " --gapplication-service\n"));
    }
}

}  // namespace
}  // namespace applist::test
