// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "support/PolicyBus.h"

namespace applist::test {

/// The channel, written out: what the tests took from the product would follow its mistakes.
inline constexpr const char* CHANNEL_PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
inline constexpr const char* CHANNEL_INTERFACE = "org.vantu.javamw.DbusCommunication";

/// A bus_actor that some user runs.
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

/// Where a policy holds; the parameter of tests for every such place.
struct Place {
    PolicyBus::Daemon daemon;
    std::string name;
    std::string rules;
};

std::ostream& operator<<(std::ostream& out, const Place& place);

/// Tests that need users, and so root. Where the parameter says, the policy that is installed
/// holds.
class PolicyTest : public testing::TestWithParam<Place> {
protected:
    void SetUp() override;
    std::unique_ptr<PolicyBus> MakeBus() const;
};

/// Both daemons, each with both sets of rules.
std::vector<Place> AllPlaces();
std::string NameOfPlace(const testing::TestParamInfo<Place>& info);

/// Skips the running test, with the reason, unless it is run by root.
void SkipUnlessRoot();

}  // namespace applist::test
