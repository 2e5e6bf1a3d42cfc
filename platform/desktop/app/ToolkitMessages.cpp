// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/ToolkitMessages.h"

#include <Eina.h>
#include <cstdarg>

#include "log/LogWriter.h"
#include "platform_log.h"

namespace applist::desktop {
namespace {

int PriorityOf(Eina_Log_Level level) {
    if (level <= EINA_LOG_LEVEL_ERR) {
        return PLATFORM_LOG_ERROR;
    }
    return level == EINA_LOG_LEVEL_WARN ? PLATFORM_LOG_INFO : PLATFORM_LOG_DEBUG;
}

void OnToolkitMessage(const Eina_Log_Domain* domain, Eina_Log_Level level, const char* file,
                      const char* function, int line, const char* format, void* /*data*/,
                      va_list arguments) {
    const LogWriter& writer = LogWriter::Get();
    // Checked before the message is formatted, so that a dropped one costs little.
    if (!writer.Writes(PriorityOf(level))) {
        return;
    }
    TryToLog([&] {
        const CodeLocation location{file, function, std::to_string(line)};
        const std::string position = location.file + ':' + location.line + ' ' + function + "() ";
        const std::string text = FormatMessage(format, arguments);
        const int priority = IsHarmlessToolkitComplaint(function, text) ? int{PLATFORM_LOG_DEBUG}
                                                                        : PriorityOf(level);
        return writer.Writes(priority) &&
               writer.Write({priority, domain->name, position + text, location});
    });
}

}  // namespace

ToolkitMessages::ToolkitMessages() {
    // The toolkit has not started yet, and Eina must be initialised before its log is redirected.
    // Eina counts these calls.
    eina_init();
    eina_log_print_cb_set(OnToolkitMessage, nullptr);
}

ToolkitMessages::~ToolkitMessages() {
    // Eina may keep running for other users, so it must not keep a callback of this object.
    eina_log_print_cb_set(eina_log_print_cb_stderr, nullptr);
    eina_shutdown();
}

}  // namespace applist::desktop
