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

/// A set on which examples are played, one after the other, as one session: the built application,
/// and a middleware that does what the examples say and compares all that it hears, in its order.
class WireSession {
public:
    /// Plays one example. Fails at its first line that turns out otherwise, and on anything heard
    /// that the example does not tell of.
    testing::AssertionResult Play(const WireExample& example);

private:
    testing::AssertionResult PlayStep(const WireStep& step);
    testing::AssertionResult PlayApplication(const std::string& what);
    testing::AssertionResult PlayMiddleware(const std::string& what);
    testing::AssertionResult PressKey(const std::string& key);
    testing::AssertionResult Send(const WireStep& step);
    testing::AssertionResult Hear(const PeerEvent& expected);
    /// Nothing more has come than was told of, nor is on its way.
    testing::AssertionResult HearsNoMore();

    Television m_set;
    std::unique_ptr<ChildProcess> m_application;
    std::unique_ptr<ScriptedPeer> m_middleware;
    /// The unique name behind the application's last announcement.
    std::string m_applicationName;
    size_t m_heard = 0;  ///< Of the middleware's events.
};

}  // namespace applist::test
