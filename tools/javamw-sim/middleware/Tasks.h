// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "common/Output.h"
#include "feed/Feed.h"
#include "middleware/Session.h"
#include "recording/Conversation.h"

/// The commands that act as a middleware, and the command that records other middlewares. Each runs
/// the default main context until the command ends, and returns the exit code of the program.
namespace applist::sim {

/// Prints every event of every application until a signal ends it.
ExitCode Watch(const SessionOptions& options);

/// Fills the list of every application that sends LocalCreated, then watches. Applies the changes
/// of the feed over time, starting when the first list is filled.
///
/// The application sends LocalCreated to each middleware that it has connected. The handshake alone
/// is not sufficient: announcements are broadcast, so one that another middleware caused looks like
/// ours. Calls before LocalCreated are answered, but their events are lost.
ExitCode Serve(const SessionOptions& options, Feed feed);

/// Calls one function of the first application that connects and prints the items of the reply.
ExitCode CallOnce(const SessionOptions& options, Function function, const Items& arguments);

/// Options of Replay().
struct ReplayOptions {
    std::string file;  ///< File name for messages.
    /// Factor relative to the recording; absent: as fast as possible.
    std::optional<double> speed = 1;
    unsigned patience = 2;  ///< Seconds to wait for messages that are still missing.
    bool json = false;
};

/// Sends the messages of the recorded middleware to the first application that connects, and
/// reports where the application behaves differently from the recorded one.
///
/// A message is sent only after as many calls are answered as in the recording, so the order of the
/// messages of the application does not depend on the speed.
ExitCode Replay(const SessionOptions& session, const ReplayOptions& options,
                const Conversation& conversation);

/// Records the traffic between other middlewares and applications on a bus until a signal ends it.
/// A bus allows this only to its owner and to root. address may be empty for the system bus; file
/// may be "-" for standard output.
ExitCode RecordBus(const std::string& address, const std::string& file);

}  // namespace applist::sim
