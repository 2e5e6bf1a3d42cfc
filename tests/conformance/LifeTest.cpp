// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// app.h: the order of an application's life.
#include <gtest/gtest.h>

#include "app.h"
#include "conformance/Contract.h"
#include "conformance/ForkedRun.h"
#include "conformance/SetUnderTest.h"

namespace applist::test {
namespace {

class Life : public testing::Test {
protected:
    static std::string Of(const Plan& plan) { return ForkedRun(plan).Story(); }

    std::unique_ptr<SetUnderTest> m_set = MakeSet();
};

TEST_F(Life, IsCreateLaunchAndTerminate) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_EQ(Of({.inLaunch = ui_app_exit}), "create launch terminate 0");
}

TEST_F(Life, BringsTheFirstLaunchEvenIfCreateAsksForTheEnd) {
    CONTRACT("app.h", "ui_app_exit()");
    EXPECT_EQ(Of({.inCreate = ui_app_exit}), "create launch terminate 0");
}

TEST_F(Life, EndsOnceHoweverOftenTheEndIsAskedFor) {
    CONTRACT("app.h", "ui_app_exit()");
    const auto thrice = [] {
        ui_app_exit();
        ui_app_exit();
        ui_app_exit();
    };
    EXPECT_EQ(Of({.inCreate = thrice, .inLaunch = thrice}), "create launch terminate 0");
}

TEST_F(Life, FailsWithoutTerminateWhenCreateRefuses) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_EQ(Of({.start = false}), "create failed");
}

TEST_F(Life, FailsWithoutCallbacks) {
    CONTRACT("app.h", "ui_app_main()");
    EXPECT_LT(ui_app_main(0, nullptr, nullptr, nullptr), 0);
}

TEST_F(Life, IsNotEndedByAWishFromBeforeIt) {
    CONTRACT("app.h", "ui_app_exit()");
    ui_app_exit();
    EXPECT_EQ(Of({.inLaunch = ui_app_exit}), "create launch terminate 0");
}

TEST_F(Life, HasNoPreparedWindowForAnUnknownApplication) {
    CONTRACT("app.h", "app_get_preinitialized_window()");
    EXPECT_EQ(app_get_preinitialized_window("org.vantu.conformance-test.unknown"), nullptr);
}

}  // namespace
}  // namespace applist::test
