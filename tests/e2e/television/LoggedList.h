// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {

/// A set whose list writes its log to a file: the test does not read a pipe while it waits, and a
/// full pipe would block the list.
class LoggedList : public testing::Test {
protected:
    explicit LoggedList(const ChildProcess::Environment& changes = {},
                        const Desktop& desktop = {"openbox", "picom"})
        : m_set(changes, desktop) {}

    /// Starts the list and a middleware with these lines of items.
    void Show(const std::string& items) {
        m_log = m_set.WriteFile("log", "");
        m_set.Show(items, {"sh", "-c", "APPLIST_LOG=debug exec \"$1\" 2>\"$0\"", m_log});
    }
    /// Shows the list with a "Alpha", b "Bravo" and c "Charlie", the first row selected.
    void ShowThreeItems() {
        Show("a\tAlpha\nb\tBravo\nc\tCharlie\n");
        ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    /// The list's log so far.
    std::string Log() const {
        std::ifstream file(m_log);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    /// Waits for the end of the list; true iff the row of this name was activated. The middleware
    /// cannot ask for it after the end.
    testing::AssertionResult Activated(const std::string& name) {
        m_set.application().WaitForExit();
        if (Log().find("select item callback: item: [name: " + name + ",") == std::string::npos) {
            return testing::AssertionFailure() << name << " was not activated:\n" << Log();
        }
        return testing::AssertionSuccess();
    }

    Television m_set;

private:
    std::string m_log;
};

}  // namespace applist::test
