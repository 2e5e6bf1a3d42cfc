// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// app_control.h.
#include <string>

#include <gtest/gtest.h>

#include "app_control.h"
#include "conformance/Contract.h"
#include "conformance/SetUnderTest.h"

namespace applist::test {
namespace {

class LaunchRequests : public testing::Test {
protected:
    void SetUp() override {
        CONTRACT("app_control.h", "app_control_create()");
        ASSERT_EQ(app_control_create(&m_request), APP_CONTROL_ERROR_NONE);
        ASSERT_NE(m_request, nullptr);
    }
    void TearDown() override {
        CONTRACT("app_control.h", "app_control_destroy()");
        EXPECT_EQ(app_control_destroy(m_request), APP_CONTROL_ERROR_NONE);
    }

    std::unique_ptr<SetUnderTest> m_set = MakeSet();
    app_control_h m_request = nullptr;
};

TEST_F(LaunchRequests, TakeAnApplicationAndWhatItReceives) {
    CONTRACT("app_control.h", "app_control_set_app_id() and app_control_add_extra_data()");
    std::string text = "Data services are not available";
    EXPECT_EQ(app_control_set_app_id(m_request, "org.vantu.alert-syspopup"),
              APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "type", "unavailable"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", text.c_str()), APP_CONTROL_ERROR_NONE);
}

TEST_F(LaunchRequests, TakeAnotherValueForAKeyAndAnEmptyOne) {
    CONTRACT("app_control.h", "app_control_add_extra_data()");
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", "one"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", "another"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", ""), APP_CONTROL_ERROR_NONE);
}

TEST_F(LaunchRequests, FailWhenTheyNameNoApplication) {
    CONTRACT("app_control.h", "app_control_send_launch_request()");
    EXPECT_LT(app_control_send_launch_request(m_request, nullptr, nullptr), 0);
}

TEST_F(LaunchRequests, RefuseNoRequestAtAll) {
    CONTRACT("app_control.h", "app_control_destroy()");
    EXPECT_LT(app_control_destroy(nullptr), 0);
}

}  // namespace
}  // namespace applist::test
