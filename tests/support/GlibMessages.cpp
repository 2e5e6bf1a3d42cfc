// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/GlibMessages.h"

#include <glib.h>
#include <mutex>
#include <string_view>

namespace applist::test {
namespace {

struct Recorder {
    std::mutex mutex;
    std::vector<std::string> messages;
};

Recorder& TheRecorder() {
    static Recorder recorder;
    return recorder;
}

std::string Field(std::string_view key, const GLogField* fields, gsize count) {
    for (gsize i = 0; i < count; ++i) {
        if (fields[i].key == key) {
            return static_cast<const char*>(fields[i].value);
        }
    }
    return "";
}

GLogWriterOutput Write(GLogLevelFlags level, const GLogField* fields, gsize count, void* data) {
    if ((level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR)) == 0) {
        return g_log_writer_default(level, fields, count, data);
    }
    auto& recorder = *static_cast<Recorder*>(data);
    const std::scoped_lock lock(recorder.mutex);
    recorder.messages.push_back(Field("GLIB_DOMAIN", fields, count) + ": " +
                                Field("MESSAGE", fields, count));
    return G_LOG_WRITER_HANDLED;
}

}  // namespace

void RecordGlibMessages() {
    static std::once_flag once;
    std::call_once(once, [] { g_log_set_writer_func(Write, &TheRecorder(), nullptr); });
    const std::scoped_lock lock(TheRecorder().mutex);
    TheRecorder().messages.clear();
}

std::vector<std::string> GlibMessages() {
    const std::scoped_lock lock(TheRecorder().mutex);
    return TheRecorder().messages;
}

}  // namespace applist::test
