// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What a desktop reads to start the programs, under another prefix than the configured one.
#include <gmock/gmock.h>

#include "unit/install/InstalledData.h"

namespace applist::test {
namespace {

using testing::HasSubstr;

class InstalledEntries : public InstalledData {};

TEST_F(InstalledEntries, StartTheProgramsOfTheirOwnPrefix) {
    for (const std::string program : {"applist", "org.vantu.alert-syspopup"}) {
        const std::string id = program == "applist" ? "org.vantu.applist" : program;
        const std::string start = "\nExec=\"" INSTALLED_BIN "/" + program + "\"";
        EXPECT_THAT(Content("/usr/share/applications/" + id + ".desktop"), HasSubstr(start + "\n"));
        EXPECT_THAT(Content("/usr/share/dbus-1/services/" + id + ".service"),
                    HasSubstr(start + " --gapplication-service\n"));
    }
}

}  // namespace
}  // namespace applist::test
