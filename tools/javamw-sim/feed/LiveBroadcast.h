// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "File.h"
#include "GlibHandles.h"
#include "broadcast/BroadcastReader.h"
#include "feed/Feed.h"

namespace applist::sim {

/// A broadcast that is served while it arrives, from a pipe, a FIFO, a device or a growing file.
/// Runs on the default main context.
class LiveBroadcast {
public:
    struct Observer {
        std::function<void(const Items&)> changed;       ///< The offered applications.
        std::function<void(const std::string&)> remark;  ///< A message for the user.
        /// The input cannot be read or used. Nothing else follows.
        std::function<void(const std::string&)> failed;
    };

    LiveBroadcast(std::string file, InputFile input, BroadcastFeedOptions options);

    /// Begins to read. Stops when this object ends.
    void Start(Observer observer);

    /// The wanted seconds between changes.
    double interval() const { return m_options.interval.value_or(0); }

    /// Returns a line that counts the damage so far, or an empty string.
    std::string Summary() const { return DamageSummary(m_file, m_reader.damage()); }

private:
    void ReadWhileReady();
    void OnReady();
    void OnGrowth();
    void OnSnapshot(const Snapshot& snapshot);
    void OnEnd();
    void TellDamage();
    std::string Problem() const;

    std::string m_file;
    InputFile m_input;
    BroadcastFeedOptions m_options;
    Observer m_observer;
    BroadcastReader m_reader;
    Snapshot m_last;
    Items m_items;
    bool m_everOffered = false;
    bool m_saidWaiting = false;
    size_t m_told = 0;                     ///< How many places of damage were printed.
    std::unique_ptr<InputFile> m_changes;  ///< Notifies of changes of a growing file.
    Registration m_growing;
    Registration m_reading;
};

}  // namespace applist::sim
