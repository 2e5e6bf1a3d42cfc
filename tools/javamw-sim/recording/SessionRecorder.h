// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "Result.h"
#include "recording/RecordingFile.h"
#include "recording/TrafficTap.h"

namespace applist::sim {

/// Records what passes one connection into a file, from its beginning to its end.
class SessionRecorder {
public:
    /// A partner's recorder also hears the announcements that the partner makes itself. connection
    /// must outlive it. A failure names the file.
    static Result<std::unique_ptr<SessionRecorder>> Start(GDBusConnection* connection,
                                                          TrafficTap::Use use,
                                                          const std::string& file);
    SessionRecorder(GDBusConnection* connection, TrafficTap::Use use, RecordingFile file);

    /// Ends the recording. The first error of writing it; empty for none. Once only.
    std::string Finish();
    /// How many messages the file holds. REQUIRES: finished.
    size_t count() const { return m_file.count(); }

private:
    RecordingFile m_file;
    Registration m_announcements;
    std::unique_ptr<TrafficTap> m_tap;
};

}  // namespace applist::sim
