// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "log/LogWriter.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

#include "platform_log.h"

namespace applist::desktop {
namespace {

// A single write(2), so that lines from several threads are not interleaved.
bool WriteToStandardError(const LogRecord& record) {
    const std::string line = StandardErrorLine(record);
    return write(STDERR_FILENO, line.data(), line.size()) == static_cast<ssize_t>(line.size());
}

int PriorityOf(GLogLevelFlags level) {
    if ((level & (G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING)) != 0) {
        return PLATFORM_LOG_ERROR;
    }
    const bool notice = (level & (G_LOG_LEVEL_MESSAGE | G_LOG_LEVEL_INFO)) != 0;
    return notice ? PLATFORM_LOG_INFO : PLATFORM_LOG_DEBUG;
}

// GLib marks a null-terminated string with a negative length.
std::string Value(const GLogField& field) {
    const auto* bytes = static_cast<const char*>(field.value);
    return field.length < 0 ? std::string(bytes)
                            : std::string(bytes, static_cast<size_t>(field.length));
}

LogRecord RecordOf(GLogLevelFlags level, const GLogField* fields, gsize count) {
    // "GLib" is the tag of messages that do not name a domain.
    LogRecord record{PriorityOf(level), "GLib", "", std::nullopt};
    for (gsize i = 0; i < count; ++i) {
        const std::string_view name = fields[i].key;
        if (name == "MESSAGE") {
            record.message = Value(fields[i]);
        } else if (name == "GLIB_DOMAIN") {
            record.tag = Value(fields[i]);
        }
    }
    if (IsUnknownWatchComplaint(record.tag, record.message)) {
        record.priority = PLATFORM_LOG_DEBUG;
    }
    return record;
}

GLogWriterOutput OnGlibMessage(GLogLevelFlags level, const GLogField* fields, gsize count, void*) {
    // The result is ignored, because a failure to log cannot be logged.
    TryToLog([&] {
        const LogRecord record = RecordOf(level, fields, count);
        const LogWriter& writer = LogWriter::Get();
        return writer.Writes(record.priority) && writer.Write(record);
    });
    return G_LOG_WRITER_HANDLED;
}

bool WriteMessage(int priority, const char* tag, const char* format, va_list arguments) {
    LogRecord record{priority, tag, FormatMessage(format, arguments), std::nullopt};
    record.location = ParseLocation(record.message);
    return LogWriter::Get().Write(record);
}

}  // namespace

LogWriter& LogWriter::Get() {
    static LogWriter writer;
    return writer;
}

void TakeGlibMessages() {
    // GLib aborts the program if a second writer is set.
    static const bool taken = [] {
        g_log_set_writer_func(OnGlibMessage, nullptr, nullptr);
        return true;
    }();
    static_cast<void>(taken);
}

LogWriter::LogWriter()
    : m_journal(g_log_writer_is_journald(STDERR_FILENO) != 0), m_threshold(PLATFORM_LOG_ERROR) {
    const char* wanted = std::getenv("APPLIST_LOG");
    if (wanted == nullptr) {
        return;
    }
    if (const auto level = ParseLogLevel(wanted)) {
        m_threshold = *level;
        return;
    }
    const std::string text = std::string("APPLIST_LOG: unknown level \"") + wanted +
                             "\"; it is one of error, info, debug. Using error";
    // LOG_ERROR would call Get() again while Get() constructs this object.
    Write({PLATFORM_LOG_ERROR, "applist", text, std::nullopt});
}

bool LogWriter::Write(const LogRecord& record) const {
    // A record that the journal refuses still reaches standard error.
    return (m_journal && WriteToJournal(record)) || WriteToStandardError(record);
}

bool LogWriter::WriteToJournal(const LogRecord& record) const {
    const auto fields = JournalFields(record);
    std::vector<GLogField> raw;
    raw.reserve(fields.size());
    for (const auto& [name, value] : fields) {
        // The entries point into fields, which outlives the call below.
        raw.push_back({name.c_str(), value.data(), static_cast<gssize>(value.size())});
    }
    // The level passed here is ignored, because journald reads the priority from the fields.
    return g_log_writer_journald(G_LOG_LEVEL_MESSAGE, raw.data(), raw.size(), nullptr) ==
           G_LOG_WRITER_HANDLED;
}

}  // namespace applist::desktop

extern "C" int __dlog_print(int /*log_id*/, int priority, const char* tag, const char* format,
                            ...) {
    using namespace applist::desktop;
    // Skips the formatting of a message that is not written.
    if (!LogWriter::Get().Writes(priority)) {
        return 0;
    }
    va_list arguments;
    va_start(arguments, format);
    const bool written = TryToLog([&] { return WriteMessage(priority, tag, format, arguments); });
    va_end(arguments);
    return written ? 0 : -1;
}
