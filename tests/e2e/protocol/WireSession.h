// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "support/ScriptedPeer.h"
#include "support/Television.h"
#include "support/WireDocument.h"

namespace applist::test {

/// Plays examples in order as one session on a set with the built application. It acts as the
/// middleware, and compares all messages that it receives, in order.
class WireSession {
public:
    /// Plays one example. Fails at the first line that does not match and on any message that the
    /// example does not contain.
    testing::AssertionResult Play(const WireExample& example);

private:
    testing::AssertionResult PlayStep(const WireStep& step);
    testing::AssertionResult PlayApplication(const std::string& what);
    testing::AssertionResult PlayMiddleware(const std::string& what);
    testing::AssertionResult PressKey(const std::string& key);
    testing::AssertionResult Send(const WireStep& step);
    testing::AssertionResult Hear(const PeerEvent& expected);
    /// Expects that every message received was in an example and that no other is on its way.
    testing::AssertionResult HearsNoMore();

    Television m_set;
    std::unique_ptr<ChildProcess> m_application;
    std::unique_ptr<ScriptedPeer> m_middleware;
    /// The unique name of the application that announced itself last.
    std::string m_applicationName;
    size_t m_heard = 0;  ///< Of the middleware's events.
};

}  // namespace applist::test
