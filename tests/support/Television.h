// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/PrivateBus.h"
#include "support/SessionBus.h"
#include "support/TemporaryDir.h"
#include "support/XDisplay.h"

namespace applist::test {

/// A middleware in a second process: javamw-sim, whose lines are read in order.
class Middleware {
public:
    Middleware(const std::vector<std::string>& arguments,
               const ChildProcess::Environment& environment);

    /// Reads on until a line contains text; true iff one does in time. Lines before it are
    /// skipped, the next wait starts behind it.
    bool Sees(const std::string& text);
    /// The same for the event that the selection moved to the item with this id and name.
    bool SeesSelected(const std::string& id, const std::string& name);
    /// All that was printed so far, for messages of failed tests.
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

    /// changes come on top of what every program of the set finds in its environment.
    explicit Television(const ChildProcess::Environment& changes = {},
                        const Desktop& desktop = {"openbox", "picom"});

    /// Starts the program; it is on its own from then on. wrapper precedes it on the command line.
    std::unique_ptr<ChildProcess> StartApplication(const std::vector<std::string>& wrapper = {});
    std::unique_ptr<Middleware> StartMiddleware(const std::vector<std::string>& arguments);
    /// A middleware that fills the list with the items a "Alpha", b "Bravo" and c "Charlie".
    std::unique_ptr<Middleware> StartMiddlewareWithThreeItems();

    /// Starts both, the middleware with these lines of items.
    void Show(const std::string& items, const std::vector<std::string>& wrapper = {});
    /// Both, with the list filled, on the screen and the first row selected.
    void ShowThreeItems();

    /// Waits until the window with this title gets the keys; true iff it does in time.
    bool WaitForWindow(const std::string& title = LIST);
    /// Waits until there is no such window; true iff so in time.
    bool WaitForNoWindow(const std::string& title);
    /// Waits until a row with the focus mark stands on the screen and gets the keys, or no row has
    /// the mark; true iff so in time.
    bool WaitForFocusedRow();
    bool WaitForNoFocusedRow();
    /// Waits until a row has the mark, whoever gets the keys.
    bool WaitForFocusMark();
    /// Runs platformctl and returns its exit status.
    int Configure(const std::vector<std::string>& arguments);
    std::string WriteFile(const std::string& name, const std::string& content);

    XDisplay& screen() { return m_screen; }
    PrivateBus& systemBus() { return m_systemBus; }
    /// Its daemon's streams hold what the programs print that it starts.
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
