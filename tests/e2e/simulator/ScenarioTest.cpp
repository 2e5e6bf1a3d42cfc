// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Plays the scenarios of javamw-sim against the built application on a real screen.
#include <filesystem>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

/// Runs the application and plays a scenario to it.
class PlayedScenario : public testing::Test {
protected:
    void StartApplication() { m_application = m_set.StartApplication(); }

    /// Plays one of the scenarios in the tool's folder.
    void Play(const std::string& name) {
        const auto file = std::filesystem::path(SCENARIOS) / (name + ".scenario");
        m_scenario = m_set.StartMiddleware({"run", file.string()});
    }
    void ExpectToHold() {
        EXPECT_EQ(m_scenario->process().WaitForExit(PATIENCE * 3), 0)
            << m_scenario->Transcript() << m_scenario->process().Errors();
        EXPECT_THAT(m_scenario->Transcript(), Not(HasSubstr("# SKIP")));
    }
    /// The application is as it was: it takes keys, and ends on one in good order.
    void ExpectALivingApplication() {
        ASSERT_TRUE(m_set.WaitForWindow());
        m_set.screen().TypeKey("Escape");
        EXPECT_EQ(m_application->WaitForExit(), 0);
    }

    Television m_set;
    std::unique_ptr<ChildProcess> m_application;
    std::unique_ptr<Middleware> m_scenario;
};

TEST_F(PlayedScenario, HoldsInANormalSessionWhenTheApplicationIsFirst) {
    StartApplication();
    Play("normal-session");
    ExpectToHold();
    ExpectALivingApplication();
}

TEST_F(PlayedScenario, HoldsInANormalSessionWhenTheMiddlewareIsFirst) {
    Play("normal-session");
    StartApplication();
    ExpectToHold();
    ExpectALivingApplication();
}

TEST_F(PlayedScenario, HoldsThroughEachFaultOfTheHandshake) {
    Play("handshake-faults");
    StartApplication();
    ExpectToHold();
    ExpectALivingApplication();
}

TEST_F(PlayedScenario, HoldsWithTwoMiddlewares) {
    StartApplication();
    ASSERT_TRUE(m_set.WaitForWindow());
    Play("two-partners");
    ExpectToHold();
    ExpectALivingApplication();
}

TEST_F(PlayedScenario, HoldsThroughMalformedFrames) {
    StartApplication();
    Play("malformed-frames");
    ExpectToHold();
    ExpectALivingApplication();
}

TEST_F(PlayedScenario, HoldsThroughAFlood) {
    StartApplication();
    Play("flood");
    ExpectToHold();
    ExpectALivingApplication();
}

}  // namespace
}  // namespace applist::test
