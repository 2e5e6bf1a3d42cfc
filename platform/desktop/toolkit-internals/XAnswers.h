// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>
#include <functional>
#include <map>
#include <string>
#include <string_view>

struct xcb_connection_t;

namespace applist::desktop {

/// Asks the X server in one batch for the numbers of extensions and atoms that the toolkit would
/// ask for one by one when it connects. The numbers are the same for all connections. The program
/// replaces XQueryExtension() and XInternAtom(), which use these answers instead of waiting 37
/// times.
///
/// Main thread only. Requires a running toolkit. At most one object at a time.
class XAnswers {
public:
    /// An extension's numbers, as in XQueryExtension().
    struct Extension {
        bool present = false;
        int request = 0;
        int event = 0;
        int error = 0;
    };

    /// Connects to the server of DISPLAY and waits for its answers. After a failure FindExtension()
    /// and FindAtom() find nothing. Create it right before the toolkit connects.
    XAnswers();
    ~XAnswers() { Forget(); }
    XAnswers(const XAnswers&) = delete;
    XAnswers& operator=(const XAnswers&) = delete;
    XAnswers(XAnswers&&) = delete;
    XAnswers& operator=(XAnswers&&) = delete;

    /// Closes the connection and discards the answers. Until then the connection keeps the server
    /// from resetting its atoms, which it may do after its last connection has closed. Called when
    /// the main loop is idle for the first time, because the toolkit has connected by then.
    void Forget();

    /// Returns the current answers if they come from the display of this name, else null.
    static const XAnswers* For(const char* display);
    /// Return the server's answer, or null if the name was not asked for.
    const Extension* FindExtension(std::string_view name) const;
    const unsigned long* FindAtom(std::string_view name) const;

private:
    void AskForExtensions();
    void AskForAtoms();

    xcb_connection_t* m_connection;
    std::string m_display;
    // The comparison does not need a copy of a name, so that a search cannot throw into C code.
    std::map<std::string, Extension, std::less<>> m_extensions;
    std::map<std::string, unsigned long, std::less<>> m_atoms;
    Ecore_Idle_Enterer* m_atFirstIdle = nullptr;
};

}  // namespace applist::desktop
