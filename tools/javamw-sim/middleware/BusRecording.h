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

/// Records the traffic between other middlewares and applications on a bus until a signal ends it.
/// A bus allows this only to its owner and to root.
class BusRecording {
public:
    /// address may be empty for the system bus; file may be "-" for standard output.
    BusRecording(std::string address, std::string file);

    /// Call only once.
    ExitCode Run();

private:
    ExitCode Record();
    /// Returns an empty string on success.
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
