// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDir.h"
#include "support/XDisplay.h"

namespace applist::test {

/// A middleware in a child process: javamw-sim, whose output lines are read in order.
class Middleware {
public:
    Middleware(const std::vector<std::string>& arguments,
               const ChildProcess::Environment& environment);

    /// Reads until a line contains text; true iff one does in time. The next wait starts after that
    /// line.
    bool Sees(const std::string& text);
    /// The same for the event that the item with this id and name was selected.
    bool SeesSelected(const std::string& id, const std::string& name);
    /// All output so far, for failure messages.
    const std::string& Transcript() const { return m_process.Output(); }
    ChildProcess& process() { return m_process; }

private:
    ChildProcess m_process;
    size_t m_read = 0;
};

/// A whole set for end-to-end tests: a screen with window manager and compositor, a system bus, a
/// session bus that starts the build's applications, a home folder, and an Italian set's settings,
/// which offer the list.
class Television {
public:
    /// The titles of the windows that may be on the screen.
    static constexpr const char* LIST = "org.vantu.applist";
    static constexpr const char* ALERT_POPUP = "org.vantu.alert-syspopup";
    /// The bar of the focused row, and the panel, in the desktop's theme.
    static constexpr uint32_t FOCUS_COLOUR = 0xFFD140;
    static constexpr uint32_t PANEL_COLOUR = 0x12161C;

    /// changes are added to the environment of every program of the set.
    explicit Television(const ChildProcess::Environment& changes = {},
                        const Desktop& desktop = {"openbox", "picom"});

    /// Starts the program, without waiting for it. wrapper precedes it on the command line.
    std::unique_ptr<ChildProcess> StartApplication(const std::vector<std::string>& wrapper = {});
    std::unique_ptr<Middleware> StartMiddleware(const std::vector<std::string>& arguments);
    /// Starts a middleware that fills the list with the items a "Alpha", b "Bravo" and c "Charlie".
    std::unique_ptr<Middleware> StartMiddlewareWithThreeItems();

    /// Starts the application and a middleware with these lines of items.
    void Show(const std::string& items, const std::vector<std::string>& wrapper = {});
    /// Starts both and waits until the list is filled and visible and its first row is selected.
    void ShowThreeItems();

    /// Waits until the window with this title has the keyboard focus; true iff it does in time.
    bool WaitForWindow(const std::string& title = LIST);
    /// Waits until no window has this title; true iff that happens in time.
    bool WaitForNoWindow(const std::string& title);
    /// Waits until a row with the focus mark is visible and its window has the keyboard focus, or
    /// until no row has the mark; true iff that happens in time.
    bool WaitForFocusedRow();
    bool WaitForNoFocusedRow();
    /// Waits until a row has the mark, with or without the keyboard focus.
    bool WaitForFocusMark();
    /// Runs platformctl and returns its exit status.
    int Configure(const std::vector<std::string>& arguments);
    std::string WriteFile(const std::string& name, const std::string& content);

    XDisplay& screen() { return m_screen; }
    PrivateBus& systemBus() { return m_systemBus; }
    /// The output of the programs that it starts appears on its daemon's streams.
    SessionBus& sessionBus() { return *m_sessionBus; }
    ChildProcess& application() { return *m_application; }
    Middleware& middleware() { return *m_middleware; }
    ChildProcess::Environment Environment() const;

private:
    TemporaryDir m_folder;
    ChildProcess::Environment m_changes;
    PrivateBus m_systemBus;
    XDisplay m_screen;
    std::unique_ptr<SessionBus> m_sessionBus;
    std::unique_ptr<Middleware> m_middleware;
    std::unique_ptr<ChildProcess> m_application;
};

}  // namespace applist::test
