// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "recording/RecordingFile.h"

#include <cerrno>
#include <string_view>
#include <utility>

#include <glib/gstdio.h>

#include "common/File.h"
#include "recording/CaptureFile.h"
#include "recording/RecordingText.h"

namespace applist::sim {
namespace {

struct UnrefDateTime {
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
};

std::string Now() {
    const std::unique_ptr<GDateTime, UnrefDateTime> now(g_date_time_new_now_utc());
    char* text = g_date_time_format_iso8601(now.get());
    std::string result = text;
    g_free(text);
    return result;
}

}  // namespace

Result<Recording> LoadRecording(const std::string& file) {
    const auto input = File::Read(file);
    if (!input) {
        return Result<Recording>::Failure(input.error());
    }
    const std::string_view content = input->content();
    const bool capture = IsCapture(content);
    auto recording = capture ? ReadCapture(content) : ParseRecording(content);
    if (!recording) {
        return Result<Recording>::Failure(file + (capture ? ": " : ":") + recording.error());
    }
    if (!recording->remark.empty()) {
        recording->remark = file + ": " + recording->remark;
    }
    return recording;
}

void RecordingFile::CloseFile::operator()(FILE* file) const {
    if (file != stdout) {
        static_cast<void>(std::fclose(file));
    }
}

Result<RecordingFile> RecordingFile::Create(const std::string& file) {
    FILE* opened = file == "-" ? stdout : g_fopen(file.c_str(), "we");
    if (opened == nullptr) {
        return Result<RecordingFile>::Failure(file + ": " + g_strerror(errno));
    }
    RecordingFile created(file, opened);
    created.WriteText(RecordingHeader(Now()));
    return created.error().empty() ? Result(std::move(created))
                                   : Result<RecordingFile>::Failure(created.error());
}

void RecordingFile::Write(const RecordedMessage& message) {
    WriteText(RecordingLine(message));
    ++m_count;
}

void RecordingFile::WriteText(const std::string& line) {
    FILE* file = m_file.get();
    const bool written = std::fwrite(line.data(), 1, line.size(), file) == line.size() &&
                         std::fputc('\n', file) != EOF && std::fflush(file) == 0;
    if (!written && m_error.empty()) {
        m_error = m_name + ": " + g_strerror(errno);
    }
}

}  // namespace applist::sim
