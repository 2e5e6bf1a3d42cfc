// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <glib.h>

#include "log/LogRecord.h"

namespace applist::desktop {

/// Writes the messages of __dlog_print() and, in programs that request it, those of the toolkit and
/// GLib. Writes to the journal if standard error is connected to it, else to standard error. Does
/// not change any process-wide state, because a module loaded by another program uses it, too. Any
/// thread.
///
/// The environment variable APPLIST_LOG sets the lowest priority that is written: "error" (the
/// default), "info" or "debug".
class LogWriter {
public:
    /// Returns the writer of the process, created on the first call.
    static LogWriter& Get();

    /// Reads APPLIST_LOG and standard error again. No other thread may write.
    static void Reread() { Get() = LogWriter(); }

    /// Returns false if records of this priority are dropped; the caller can then skip formatting.
    bool Writes(int priority) const { return priority >= m_threshold; }
    /// Writes one record, whatever its priority. Returns false if it could not be written.
    bool Write(const LogRecord& record) const;

private:
    LogWriter();
    bool WriteToJournal(const LogRecord& record) const;

    bool m_journal;
    int m_threshold;
};

/// Calls body, which returns a bool, and returns its result, or false if it throws. For callbacks
/// from C that log: an exception that occurs while logging cannot itself be logged.
template <typename Body>
bool TryToLog(Body body) noexcept {
    try {
        return body();
    } catch (...) {
        return false;
    }
}

/// Redirects GLib's messages to the writer until the process ends. May be called repeatedly. Only a
/// program may call it, not a module: GLib accepts one writer per process, and would call a
/// module's writer after the module is unloaded.
void TakeGlibMessages();

}  // namespace applist::desktop
