// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {

/// A set whose list writes the activated row to a file, because the middleware cannot ask after the
/// list's end.
class LoggedList : public testing::Test {
protected:
    /// Shows the list with three items, the first row selected.
    void ShowThreeItems() {
        m_log = m_set.WriteFile("log", "");
        m_set.Show("a\tAlpha\nb\tBravo\nc\tCharlie\n",
                   {"sh", "-c", "APPLIST_LOG=debug exec \"$1\" 2>\"$0\"", m_log});
        ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }

    /// Waits for the end of the list; true iff the row of this name was activated.
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
