// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "common/Output.h"
#include "link/Connection.h"
#include "middleware/MainLoop.h"
#include "recording/TrafficTap.h"

namespace applist::sim {

/// Records what others say to each other on a bus, until a signal ends it: a middleware of any make
/// with its application. A bus lets only its owner and root look on.
class BusRecording {
public:
    /// address: empty for the system bus. file: "-" for standard output.
    BusRecording(std::string address, std::string file);

    /// Once only.
    ExitCode Run();

private:
    ExitCode Record();
    /// Empty on success.
    std::string BecomeMonitor();
    void Say(const std::string& line) const;
    static void cb_Closed(GDBusConnection*, int, GError*, void* recording) noexcept;

    std::string m_address;
    std::string m_file;
    MainLoop m_loop{[] { return ExitCode::Success; }};
    ConnectionPtr m_connection;
    std::unique_ptr<SessionRecorder> m_recorder;
};

}  // namespace applist::sim
