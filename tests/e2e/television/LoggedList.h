// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {

/// A set whose list tells in a file which row was activated; the middleware can no longer ask then.
class LoggedList : public testing::Test {
protected:
    /// The list with three items, on the screen and the first row selected.
    void ShowThreeItems() {
        m_log = m_set.WriteFile("log", "");
        m_set.Show("a\tAlpha\nb\tBravo\nc\tCharlie\n",
                   {"sh", "-c", "APPLIST_LOG=debug exec \"$1\" 2>\"$0\"", m_log});
        ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }

    /// Waits for the end of the list; true iff it came with the row of this name.
    testing::AssertionResult Activated(const std::string& name) {
        m_set.application().WaitForExit();
        std::ifstream file(m_log);
        const std::string log{std::istreambuf_iterator<char>(file), {}};
        if (log.find("select item callback: item: [name: " + name + ",") == std::string::npos) {
            return testing::AssertionFailure() << name << " was not activated:\n" << log;
        }
        return testing::AssertionSuccess();
    }

    Television m_set;

private:
    std::string m_log;
};

}  // namespace applist::test
