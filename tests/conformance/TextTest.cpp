// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// i18n_text.h.
#include <string>

#include <gtest/gtest.h>

#include "conformance/Contract.h"
#include "conformance/SetUnderTest.h"
#include "i18n_text.h"

namespace applist::test {
namespace {

// All message ids that the program uses.
constexpr const char* IDS[] = {"TV_DATA_SERVICE_LIST", "SID_DATA_SERVICE_IS_NOT_PROVIDED",
                               "TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG", "SID_NOT_AVAILABLE"};

class Texts : public testing::Test {
protected:
    std::unique_ptr<SetUnderTest> m_set = MakeSet();
};

TEST_F(Texts, AreThereForEveryIdOfTheProgram) {
    CONTRACT("i18n_text.h", "i18n_get_text()");
    for (const char* id : IDS) {
        const char* text = i18n_get_text(id);
        ASSERT_NE(text, nullptr) << id;
        EXPECT_STRNE(text, "") << id;
        EXPECT_STRNE(text, id) << "a viewer would read the id";
    }
}

TEST_F(Texts, StayWhereTheyAreWhileTheProgramRuns) {
    CONTRACT("i18n_text.h", "i18n_get_text()");
    const char* first = i18n_get_text(IDS[0]);
    const std::string kept = first;
    for (const char* id : IDS) {
        i18n_get_text(id);
    }
    EXPECT_EQ(first, kept);
    EXPECT_EQ(i18n_get_text(IDS[0]), kept);
}

TEST_F(Texts, AreTheIdWhenItIsUnknown) {
    CONTRACT("i18n_text.h", "i18n_get_text()");
    const char* text = nullptr;
    {
        const std::string id = "no message of any program";
        text = i18n_get_text(id.c_str());
    }
    EXPECT_STREQ(text, "no message of any program");
}

}  // namespace
}  // namespace applist::test
