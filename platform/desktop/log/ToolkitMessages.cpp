// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "log/ToolkitMessages.h"

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
    eina_init();
    eina_log_print_cb_set(OnToolkitMessage, nullptr);
}

ToolkitMessages::~ToolkitMessages() {
    eina_log_print_cb_set(eina_log_print_cb_stderr, nullptr);
    eina_shutdown();
}

}  // namespace applist::desktop
