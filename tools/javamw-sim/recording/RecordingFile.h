// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include "common/Result.h"
#include "recording/RecordedMessage.h"

namespace applist::sim {

/// Reads a recording or a capture of a bus, detected by its content. A failure names the file.
Result<Recording> LoadRecording(const std::string& file);

/// Writes a recording. Each message is flushed by Write(), so a killed process leaves a complete
/// file. May be used from any thread, but from only one at a time.
class RecordingFile {
public:
    /// Replaces the contents of file; "-" is standard output.
    static Result<RecordingFile> Create(const std::string& file);

    void Write(const RecordedMessage& message);
    size_t count() const { return m_count; }
    /// The first error with the name of the file; empty if none.
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
