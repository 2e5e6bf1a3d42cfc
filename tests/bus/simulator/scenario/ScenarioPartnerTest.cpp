// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The messages that an application receives while a scenario is played.
#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"
#include "link/Protocol.h"
#include "support/GlibWait.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ScenarioPartner : public testing::Test {
protected:
    void Play(const std::string& text) { m_run = m_set.Start({"run", m_set.File("it", text)}); }

    /// Plays text and answers its first announcement with SynAck.
    void PlayAndAnswerTheSyn(const std::string& text) {
        Play(text);
        ASSERT_TRUE(m_application.AwaitHeard(1));
        m_application.Announce("_SERVICE_SYN_ACK");
    }

    void ExpectEnd(int status) {
        EXPECT_EQ(m_run->WaitForExit(), status) << m_run->Output() << m_run->Errors();
    }

    Simulation m_set;
    ScriptedPeer m_application = m_set.ConnectApplication();
    Simulation::Process m_run;
};

TEST_F(ScenarioPartner, SkipsAStep) {
    Play("handshake skip syn\nexpect announcement syn within 1min\nwait connected within 1min\n");
    // The middleware skips its own first step, but still answers that of the application.
    const auto start = std::chrono::steady_clock::now();
    do {
        m_application.Announce("_SERVICE_SYN");
        ASSERT_TRUE(RoundTrip(m_application.Connection()));
        ASSERT_LT(std::chrono::steady_clock::now() - start, PATIENCE);
    } while (m_application.Heard().empty());
    EXPECT_EQ(m_application.Heard().front(), "_CLIENT_SYN_ACK");
    m_application.Announce("_SERVICE_ACK");
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, CompletesASkippedStepByHand) {
    PlayAndAnswerTheSyn(
        "handshake skip ack\nexpect announcement syn-ack within 1min\nannounce ack\n"
        "wait connected within 1min\n");
    ExpectEnd(0);
    ASSERT_TRUE(m_application.AwaitHeard(2));
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN", "_CLIENT_ACK"));
}

TEST_F(ScenarioPartner, IsNotConnectedWhileAStepIsPending) {
    PlayAndAnswerTheSyn(
        "handshake skip ack\nexpect announcement syn-ack within 1min\n"
        "wait connected within 10ms\n");
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("no application connected within 10 ms"));
}

TEST_F(ScenarioPartner, StillMakesADelayedStepThatIsSetToSkipMeanwhile) {
    PlayAndAnswerTheSyn(
        "handshake delay ack 1ms\nexpect announcement syn-ack within 1min\nhandshake skip ack\n"
        "wait connected within 50ms\n");
    ExpectEnd(1);
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN"));
}

TEST_F(ScenarioPartner, RepeatsSteps) {
    Play("handshake repeat syn 3\nhandshake repeat ack 2\nwait connected within 1min\n");
    ASSERT_TRUE(m_application.AwaitHeard(3));
    m_application.Announce("_SERVICE_SYN_ACK");
    ExpectEnd(0);
    ASSERT_TRUE(m_application.AwaitHeard(5));
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN", "_CLIENT_SYN", "_CLIENT_SYN",
                                                   "_CLIENT_ACK", "_CLIENT_ACK"));
}

TEST_F(ScenarioPartner, MakesADelayedStepLater) {
    PlayAndAnswerTheSyn(
        "handshake delay ack 50ms\nexpect announcement syn-ack within 1min\n"
        "wait connected within 1min\n");
    ExpectEnd(0);
    ASSERT_TRUE(m_application.AwaitHeard(2));
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN", "_CLIENT_ACK"));
}

TEST_F(ScenarioPartner, AnnouncesInAnyOrderByHand) {
    Play("handshake manual\njoin\nannounce ack\nannounce syn-ack\nannounce syn\n");
    ExpectEnd(0);
    ASSERT_TRUE(m_application.AwaitHeard(3));
    EXPECT_THAT(m_application.Heard(),
                ElementsAre("_CLIENT_ACK", "_CLIENT_SYN_ACK", "_CLIENT_SYN"));
}

TEST_F(ScenarioPartner, RestartsUnderANewName) {
    Play("join\nrestart\n");
    ASSERT_TRUE(m_application.AwaitHeard(2));
    ExpectEnd(0);
    EXPECT_NE(m_application.Events().at(0).sender, m_application.Events().at(1).sender);
}

TEST_F(ScenarioPartner, IsOneOfSeveral) {
    Play("partner one\njoin\npartner two\njoin\npartner one\nannounce ack\n");
    ASSERT_TRUE(m_application.AwaitHeard(3));
    ExpectEnd(0);
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN", "_CLIENT_SYN", "_CLIENT_ACK"));
    EXPECT_EQ(m_application.Announcer(), m_application.Events().at(0).sender);
}

TEST_F(ScenarioPartner, ReportsAnErrorReplyOfTheApplication) {
    PlayAndAnswerTheSyn(
        "wait connected within 1min\nadd a=A\nexpect error \"does not exist\"\nadd a=A\n");
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 2 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 3 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("problem: \"AddItems failed: Object does not exist"));
}

TEST_F(ScenarioPartner, SendsSignalsWithAnyBytes) {
    PlayAndAnswerTheSyn("wait connected within 1min\nsignal-hex 6f6b00\nwait 1ms\n");
    ASSERT_TRUE(m_application.AwaitHeard(3));
    EXPECT_THAT(m_application.Heard(),
                ElementsAre("_CLIENT_SYN", "_CLIENT_ACK", std::string("signal ok\0", 10)));
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, ReportsAMalformedNotification) {
    PlayAndAnswerTheSyn("wait connected within 1min\nexpect event ItemChanged within 1min\n");
    ASSERT_TRUE(m_application.AwaitHeard(2));
    m_application.Notify(m_application.Announcer(), sim::names::OBJECT_PATH, {'x', '\0'});
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(),
                HasSubstr("received notification of 2 bytes without an id instead"));
}

}  // namespace
}  // namespace applist::test
