// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "alert-syspopup/AlertWindow.h"

namespace applist::test {
namespace {

using desktop::Alert;
using desktop::ReadAlert;

TEST(Alert, IsReadFromTheExtraDataOfARequest) {
    const auto alert = ReadAlert({"", {{"text", "Hello"}, {"type", "unavailable"}}});
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->text, "Hello");
    EXPECT_EQ(alert->kind, Alert::Kind::UNAVAILABLE);
}

TEST(Alert, IsReadInAnyOrder) {
    const auto alert = ReadAlert({"", {{"type", "unavailable"}, {"other", "x"}, {"text", "Hi"}}});
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->text, "Hi");
    EXPECT_EQ(alert->kind, Alert::Kind::UNAVAILABLE);
}

TEST(Alert, IsANotificationUnlessItSaysOtherwise) {
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}}})->kind, Alert::Kind::NOTIFICATION);
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}, {"type", "notification"}}})->kind,
              Alert::Kind::NOTIFICATION);
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}, {"type", "new"}}})->kind, Alert::Kind::NOTIFICATION);
}

TEST(Alert, IsNoneWithoutAText) {
    EXPECT_FALSE(ReadAlert({"", {}}));
    EXPECT_FALSE(ReadAlert({"", {{"type", "notification"}}}));
    EXPECT_FALSE(ReadAlert({"", {{"text", ""}, {"type", "notification"}}}));
}

}  // namespace
}  // namespace applist::test
