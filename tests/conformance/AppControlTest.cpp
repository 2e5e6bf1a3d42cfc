// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// app_control.h.
#include <string>

#include <gtest/gtest.h>

#include "app_control.h"
#include "conformance/SetUnderTest.h"

namespace applist::test {
namespace {

class LaunchRequests : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_EQ(app_control_create(&m_request), APP_CONTROL_ERROR_NONE);
        ASSERT_NE(m_request, nullptr);
    }
    void TearDown() override { EXPECT_EQ(app_control_destroy(m_request), APP_CONTROL_ERROR_NONE); }

    std::unique_ptr<SetUnderTest> m_set = MakeSet();
    app_control_h m_request = nullptr;
};

TEST_F(LaunchRequests, TakeAnApplicationAndWhatItReceives) {
    std::string text = "Data services are not available";
    EXPECT_EQ(app_control_set_app_id(m_request, "org.vantu.alert-syspopup"),
              APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "type", "unavailable"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", text.c_str()), APP_CONTROL_ERROR_NONE);
}

TEST_F(LaunchRequests, TakeAnotherValueForAKeyAndAnEmptyOne) {
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", "one"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", "another"), APP_CONTROL_ERROR_NONE);
    EXPECT_EQ(app_control_add_extra_data(m_request, "text", ""), APP_CONTROL_ERROR_NONE);
}

TEST_F(LaunchRequests, FailWhenTheyNameNoApplication) {
    EXPECT_LT(app_control_send_launch_request(m_request, nullptr, nullptr), 0);
}

TEST_F(LaunchRequests, RefuseNoRequestAtAll) {
    EXPECT_LT(app_control_destroy(nullptr), 0);
}

}  // namespace
}  // namespace applist::test
