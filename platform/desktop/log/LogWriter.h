// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Eina.h>
#include <cstdarg>
#include <glib.h>

#include "log/LogRecord.h"

namespace applist::desktop {

/// Writes the log lines of __dlog_print() and, in a program that asks for it, those of the toolkit
/// and of GLib. They go to the journal when standard error is connected to it, else to standard
/// error. Any thread. Changes nothing in the process, because a module that another program loads
/// uses it as well.
///
/// The environment variable APPLIST_LOG chooses what is written: "error" (the default), "info" or
/// "debug", each with what is more urgent.
class LogWriter {
public:
    /// The process' writer. Created on the first call.
    static LogWriter& Get();

    /// False when records of this priority are dropped; then nothing of them need be prepared.
    bool Writes(int priority) const { return priority >= m_threshold; }
    /// Writes one record whatever its priority; false when it could not be written.
    bool Write(const LogRecord& record) const;

private:
    LogWriter();
    bool WriteToJournal(const LogRecord& record) const;

    bool m_journal;
    int m_threshold;
};

/// Sends GLib's messages to the writer for the rest of the process' life. May be called repeatedly.
/// Only a program may call it, never a module: GLib accepts one writer per process, and a module's
/// writer would be called after the module is unloaded.
void TakeGlibMessages();

/// While it lives, the toolkit's messages go to the writer. At most one at a time; made on the main
/// thread before the toolkit starts.
class ToolkitMessages {
public:
    ToolkitMessages();
    ~ToolkitMessages();
    ToolkitMessages(const ToolkitMessages&) = delete;
    ToolkitMessages& operator=(const ToolkitMessages&) = delete;
    ToolkitMessages(ToolkitMessages&&) = delete;
    ToolkitMessages& operator=(ToolkitMessages&&) = delete;
};

}  // namespace applist::desktop
