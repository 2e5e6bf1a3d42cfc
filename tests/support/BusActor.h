// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/PolicyBus.h"

namespace applist::test {

/// The channel, written out: what the tests took from the product would follow its mistakes.
inline constexpr const char* CHANNEL_PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
inline constexpr const char* CHANNEL_INTERFACE = "org.vantu.javamw.DbusCommunication";

/// Somebody on the bus: the program bus_actor, run by some user. BusActorMain.cpp has its commands.
class Actor {
public:
    /// Returns once it is connected.
    Actor(const PolicyBus& bus, const User& user, const std::vector<std::string>& commands);

    const std::string& UniqueName() const { return m_uniqueName; }

    /// Waits until it receives, for one whose last command is that.
    void AwaitReceiving();
    /// Ends one that receives, after all that the bus let through so far has arrived.
    void End();
    /// Waits for the end. All lines behind the first, with the names of these actors in place of
    /// their unique ones.
    std::vector<std::string> Lines(
        const std::vector<std::pair<std::string, std::string>>& names = {});

private:
    std::unique_ptr<ChildProcess> m_process;
    std::string m_uniqueName;
};

}  // namespace applist::test
