// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The entry with a request handler that fails, which the real handler never does. The entry is in a
// shared library here, so that the definition below overrides the real one.
#include <Elementary.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppListEntry.h"
#include "fakes/FakePlatformLog.h"

int AppListEntry::HandleService(app_control_s* /*request*/) {
    return 1;
}

namespace applist::test {
namespace {

TEST(AppListEntry, LeavesTheLoopWhenARequestCannotBeHandled) {
    AppListEntry entry("org.vantu.applist");
    AppListEntry::Service(nullptr, &entry);
    EXPECT_THAT(Log(),
                testing::ElementsAre(Debug("_service callback function calling", "Service"),
                                     Error("handle service failed", "Service"), Event("elm_exit")));
}

}  // namespace
}  // namespace applist::test
