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

/// The toolkit drawing into memory: no display, no bus, no daemon, a home of its own. Real widgets,
/// real theme, real focus and keys. One at a time; several in one process may follow each other.
///
/// An error that the toolkit logs fails the test, unless the test announced it.
class HeadlessToolkit {
public:
    /// themes are files laid over the default theme.
    explicit HeadlessToolkit(const std::vector<std::filesystem::path>& themes = {});
    /// Shuts the toolkit down; whatever it complains about then counts too.
    ~HeadlessToolkit();
    HeadlessToolkit(const HeadlessToolkit&) = delete;
    HeadlessToolkit& operator=(const HeadlessToolkit&) = delete;
    HeadlessToolkit(HeadlessToolkit&&) = delete;
    HeadlessToolkit& operator=(HeadlessToolkit&&) = delete;

    /// Runs the main loop until condition, asked after each turn, holds; true iff it does in time.
    static bool RunUntil(const std::function<bool()>& condition,
                         std::chrono::milliseconds patience = PATIENCE);
    /// Runs the main loop until every event, job and frame that is due now has been handled.
    static void Settle();

    /// Moves the keyboard's focus to the window, or away from it, as a window manager does.
    static void GiveFocus(Evas_Object* window);
    static void TakeFocus(Evas_Object* window);
    /// Sends a key the way a display does: through the event handlers to the widgets.
    static void PressKey(const std::string& key);
    static void ReleaseKey(const std::string& key);
    /// Puts a key, going down or coming up, behind those that wait to be handled.
    static void QueueKey(const std::string& key, bool down);

    /// Draws the window; true iff something in it is opaque. Popups take some frames to fade in.
    static bool IsShown(Evas_Object* window);
    /// Draws the window into a PNG file; true iff it was written.
    static bool SavePicture(Evas_Object* window, const std::filesystem::path& file);

    /// The next toolkit error that contains text is no failure; that it is missing is one.
    void ExpectError(const std::string& text) { m_expected.push_back(text); }
    /// The toolkit's errors so far, the announced ones left out.
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
