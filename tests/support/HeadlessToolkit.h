// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// The toolkit drawing into memory, with real widgets, theme, focus and keys. Needs no display, bus
/// or daemon and has a temporary home folder. One object at a time; a process may create several in
/// turn.
///
/// An error that the toolkit logs fails the test unless the test expects it.
class HeadlessToolkit {
public:
    /// themes are theme files that override parts of the default theme.
    explicit HeadlessToolkit(const std::vector<std::filesystem::path>& themes = {});
    /// Shuts the toolkit down. Errors logged during the shutdown fail the test, too.
    ~HeadlessToolkit();
    HeadlessToolkit(const HeadlessToolkit&) = delete;
    HeadlessToolkit& operator=(const HeadlessToolkit&) = delete;

    /// Runs the main loop until condition holds, checked after each turn; true iff it does in time.
    static bool RunUntil(const std::function<bool()>& condition,
                         std::chrono::milliseconds patience = PATIENCE);
    /// Runs the main loop until every event, job and frame that is due now has been handled.
    static void Settle();

    /// Gives the keyboard focus to the window or takes it away, as a window manager does.
    static void GiveFocus(Evas_Object* window);
    static void TakeFocus(Evas_Object* window);
    /// Sends a key as a display does, through the event handlers to the widgets.
    static void PressKey(const std::string& key);
    static void ReleaseKey(const std::string& key);
    /// Queues a key press or release after the pending events.
    static void QueueKey(const std::string& key, bool down);

    /// Expects one toolkit error that contains text. The test fails if that error does not occur.
    void ExpectError(const std::string& text) { m_expected.push_back(text); }
    /// The toolkit's unexpected errors so far.
    const std::vector<std::string>& Errors() const { return m_errors; }

private:
    static void OnLog(const Eina_Log_Domain* domain, Eina_Log_Level level, const char* file,
                      const char* function, int line, const char* format, void* data,
                      va_list arguments);
    void OnError(const std::string& text);

    TemporaryDir m_home;
    std::vector<std::string> m_expected;
    std::vector<std::string> m_errors;
};

}  // namespace applist::test
