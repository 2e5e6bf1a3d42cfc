// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The middlewares of examples/ with the application on a screen. Their own tests use
// applist-headless.
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

struct Language {
    const char* name;
    std::vector<std::string> command;
};

void PrintTo(const Language& language, std::ostream* out) {
    *out << language.name;
}

class AnExample : public testing::TestWithParam<Language> {
protected:
    /// Presses a key once the list is filled.
    void Press(const std::string& key) {
        ASSERT_TRUE(m_set.WaitForFocusedRow()) << m_middleware.Output() << m_middleware.Errors();
        m_set.screen().TypeKey(key);
    }
    bool Says(const std::string& line) { return m_middleware.WaitForText(line); }

    Television m_set;
    ChildProcess m_middleware{GetParam().command, m_set.Environment()};
};

TEST_P(AnExample, FollowsTheSelectionAndStartsTheChoiceOfTheListOnTheScreen) {
    const auto application = m_set.StartApplication();
    ASSERT_TRUE(Says("filled 3\n")) << m_middleware.Errors();
    Press("Down");
    EXPECT_TRUE(Says("selected it.news\n")) << m_middleware.Output();
    Press("Return");
    EXPECT_TRUE(Says("start it.news Notizie\n")) << m_middleware.Output();
    EXPECT_EQ(application->WaitForExit(), 0);
    EXPECT_TRUE(Says("lost ")) << m_middleware.Output();
}

TEST_P(AnExample, FillsTheListOfTheNextStart) {
    for (int start = 0; start < 2; ++start) {
        const auto application = m_set.StartApplication();
        Press("Escape");
        EXPECT_EQ(application->WaitForExit(), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(In, AnExample,
                         testing::Values(Language{"Python", {PYTHON_EXAMPLE}},
                                         Language{"Java", {JAVA_EXAMPLE}}),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace applist::test
