// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "common/Result.h"
#include "recording/RecordedMessage.h"

namespace applist::sim {

/// Reads a recording, or a capture of a bus: the content tells which. A failure names the file.
Result<Recording> LoadRecording(const std::string& file);

/// A recording that is being made. Each message is in the file when Write() returns, so that a
/// killed process leaves a whole recording. Any thread, one at a time.
class RecordingFile {
public:
    /// Replaces what file held; "-" is standard output.
    static Result<RecordingFile> Create(const std::string& file);

    void Write(const RecordedMessage& message);
    size_t count() const { return m_count; }
    /// What went wrong first, with the file's name; empty for nothing.
    const std::string& error() const { return m_error; }

private:
    struct CloseFile {
        void operator()(FILE* file) const;
    };

    RecordingFile(const std::string& name, FILE* file) : m_name(name), m_file(file) {}
    void WriteText(const std::string& line);

    std::string m_name;
    std::unique_ptr<FILE, CloseFile> m_file;
    size_t m_count = 0;
    std::string m_error;
};

}  // namespace applist::sim
