// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

#include "GlibHandles.h"
#include "Result.h"
#include "recording/Recording.h"
#include "recording/Traffic.h"

/// The text form of a recording: one JSON object on each line.
///
///     {"javamw-recording":1,"started":"2026-11-21T06:40:00Z"}
///     {"us":51,"kind":"call","side":"middleware","from":":1.1","to":":1.2","call":1,
///      "bytes":"d2070000","note":"GetAllItems"}          (one line in the file)
///
/// The first line names the version of the form; the others are messages. "us" is the time in
/// microseconds; bytes are hexadecimal; members that are empty are left out; "note" is for people
/// and not read back.
namespace applist::sim {

constexpr int64_t RECORDING_VERSION = 1;

/// Returns the first line of a recording. started is a point in time in ISO 8601.
std::string RecordingHeader(const std::string& started);

/// Returns the line of one message.
std::string RecordingLine(const RecordedMessage& message);

/// Parses a recording. An error begins with the line number: "3: ...". Blank lines and unknown
/// members are skipped, so that later versions can add members.
Result<Recording> ParseRecording(std::string_view text);

/// Reads a recording or a capture of a bus, detected by its content. A failure names the file.
Result<Recording> LoadRecording(const std::string& file);

/// Writes a recording. Each message is flushed by Write(), so a killed process leaves a complete
/// file. May be used from any thread, but from only one at a time.
class RecordingFile {
public:
    /// Empties file; "-" is standard output.
    static Result<RecordingFile> Create(const std::string& file);

    /// Writes the header if it is missing. Readers may take it as the sign that messages are
    /// recorded from now on.
    void Begin();
    /// Writes the header before the first message.
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
    bool m_begun = false;
    size_t m_count = 0;
    std::string m_error;
};

/// Records the traffic of one connection to a file.
class SessionRecorder {
public:
    /// A participant also records its own announcements. connection must outlive the recorder. A
    /// failure names the file, which is empty until Begin() or the first message.
    static Result<std::unique_ptr<SessionRecorder>> Start(GDBusConnection* connection,
                                                          TrafficTap::Use use,
                                                          const std::string& file);
    SessionRecorder(GDBusConnection* connection, TrafficTap::Use use, RecordingFile file);

    /// Writes the header. Call when no later message can be missed. Returns the error of the file,
    /// or an empty string.
    std::string Begin();
    /// Ends the recording. Returns the first write error, or an empty string. Call only once.
    std::string Finish();
    /// Number of messages in the file. REQUIRES: finished.
    size_t count() const { return m_file.count(); }

private:
    RecordingFile m_file;
    std::mutex m_mutex;  ///< Protects the file.
    Registration m_announcements;
    std::unique_ptr<TrafficTap> m_tap;
};

/// True iff bytes begin like a capture of a whole bus, pcapng or pcap, with any link type.
bool IsCapture(std::string_view bytes);

/// Reads a capture as "busctl capture" writes it, with the link type of D-Bus (231). Returns the
/// traffic between applications and middlewares. The line of a message is its packet number.
/// Incomplete packets and a damaged end are skipped and counted in the remark.
Result<Recording> ReadCapture(std::string_view bytes);

}  // namespace applist::sim
