// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app_control.h"
#include "fakes/FakePlatformLog.h"
#include "launch/LaunchProtocol.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class AppControl : public testing::Test {
protected:
    void SetUp() override {
        ClearLog();
        ASSERT_EQ(app_control_create(&request), APP_CONTROL_ERROR_NONE);
    }
    void TearDown() override { EXPECT_EQ(app_control_destroy(request), APP_CONTROL_ERROR_NONE); }

    app_control_h request = nullptr;
};

TEST_F(AppControl, BeginsEmpty) {
    EXPECT_EQ(request->appId, "");
    EXPECT_THAT(request->extraData, IsEmpty());
}

TEST_F(AppControl, KeepsExtraDataInTheOrderInWhichItIsAdded) {
    app_control_add_extra_data(request, "text", "Hello");
    app_control_add_extra_data(request, "colour", "");
    app_control_add_extra_data(request, "a", "last");
    EXPECT_THAT(request->extraData,
                ElementsAre(Pair("text", "Hello"), Pair("colour", ""), Pair("a", "last")));
}

TEST_F(AppControl, ReplacesTheValueOfAKeyInItsPlace) {
    app_control_add_extra_data(request, "text", "Hello");
    app_control_add_extra_data(request, "type", "notification");
    EXPECT_EQ(app_control_add_extra_data(request, "text", "Bye"), APP_CONTROL_ERROR_NONE);
    EXPECT_THAT(request->extraData, ElementsAre(Pair("text", "Bye"), Pair("type", "notification")));
}

TEST_F(AppControl, CopiesWhatItIsGiven) {
    std::string id = "org.vantu.one";
    std::string value = "Hello";
    app_control_set_app_id(request, id.c_str());
    app_control_add_extra_data(request, "text", value.c_str());
    id = value = "something else";
    EXPECT_EQ(request->appId, "org.vantu.one");
    EXPECT_THAT(request->extraData, ElementsAre(Pair("text", "Hello")));
}

TEST_F(AppControl, RefusesWhatNoBusCouldCarry) {
    EXPECT_LT(app_control_add_extra_data(request, "text", "\xFF\xFE"), 0);
    EXPECT_LT(app_control_add_extra_data(request, "\xC3", "Hello"), 0);
    EXPECT_LT(app_control_set_app_id(request, "org.\xC3"), 0);
    EXPECT_EQ(request->appId, "");
    EXPECT_THAT(request->extraData, IsEmpty());
}

TEST_F(AppControl, RefusesNull) {
    EXPECT_LT(app_control_create(nullptr), 0);
    EXPECT_LT(app_control_destroy(nullptr), 0);
    EXPECT_LT(app_control_set_app_id(nullptr, "org.vantu.one"), 0);
    EXPECT_LT(app_control_set_app_id(request, nullptr), 0);
    EXPECT_LT(app_control_add_extra_data(nullptr, "text", "Hello"), 0);
    EXPECT_LT(app_control_add_extra_data(request, nullptr, "Hello"), 0);
    EXPECT_LT(app_control_add_extra_data(request, "text", nullptr), 0);
    EXPECT_LT(app_control_send_launch_request(nullptr, nullptr, nullptr), 0);
}

TEST_F(AppControl, LaunchesNothingWithoutAnApplicationId) {
    EXPECT_LT(app_control_send_launch_request(request, nullptr, nullptr), 0);
    EXPECT_THAT(Log(), ElementsAre(Error("Cannot launch '': not an application id")));
}

TEST_F(AppControl, LaunchesNoPath) {
    app_control_set_app_id(request, "/bin/true");
    EXPECT_LT(app_control_send_launch_request(request, nullptr, nullptr), 0);
    EXPECT_THAT(Log(), ElementsAre(Error("Cannot launch '/bin/true': not an application id")));
}

}  // namespace
}  // namespace applist::test
