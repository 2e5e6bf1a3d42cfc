// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/PolicyBus.h"

namespace applist::test {

/// The channel's names, not taken from the product: the tests would repeat a mistake made there.
inline constexpr const char* CHANNEL_PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
inline constexpr const char* CHANNEL_INTERFACE = "org.vantu.javamw.DbusCommunication";

/// A client on the bus: the program bus_actor, run as a given user. BusActorMain.cpp lists its
/// commands.
class Actor {
public:
    /// Returns once the program is connected.
    Actor(const PolicyBus& bus, const User& user, const std::vector<std::string>& commands);

    const std::string& UniqueName() const { return m_uniqueName; }

    /// Waits until the program runs "receive", which must be its last command.
    void AwaitReceiving();
    /// Ends a program that runs "receive", after every message that the bus delivered so far has
    /// arrived.
    void End();
    /// Waits for the exit. Returns all output lines except the first, with unique names replaced by
    /// the given names.
    std::vector<std::string> Lines(
        const std::vector<std::pair<std::string, std::string>>& names = {});

private:
    std::unique_ptr<ChildProcess> m_process;
    std::string m_uniqueName;
};

}  // namespace applist::test
