// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The messages that an application receives while a scenario is played.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/ScriptedApplication.h"
#include "bus/simulator/Simulation.h"
#include "support/GlibWait.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ScenarioPartner : public testing::Test {
protected:
    void Play(const std::string& text) { m_run = m_set.Start({"run", m_set.File("it", text)}); }

    /// Plays text while the application answers the first announcement.
    void PlayToWhoAnswers(const std::string& text) {
        Play(text);
        ASSERT_TRUE(Hears(1));
        m_application.Announce(sim::names::SYN_ACK);
    }

    bool Hears(size_t count) {
        return RunUntil([&] { return m_application.heard.size() >= count; });
    }
    void ExpectEnd(int status) {
        EXPECT_EQ(m_run->WaitForExit(), status) << m_run->Output() << m_run->Errors();
    }

    Simulation m_set;
    ScriptedApplication m_application{m_set.bus().Address()};
    Simulation::Process m_run;
};

TEST_F(ScenarioPartner, SkipsAStep) {
    Play("handshake skip syn\nexpect announcement syn within 1min\nwait connected within 1min\n");
    // The middleware skips its own first step, but still answers that of the application.
    ASSERT_TRUE(RunUntil([&] {
        m_application.Announce(sim::names::SYN);
        return !m_application.heard.empty();
    }));
    EXPECT_EQ(m_application.heard.front(), "_SYN_ACK");
    m_application.Announce(sim::names::ACK);
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, CompletesASkippedStepByHand) {
    PlayToWhoAnswers(
        "handshake skip ack\nexpect announcement syn-ack within 1min\nannounce ack\n"
        "wait connected within 1min\n");
    ExpectEnd(0);
    ASSERT_TRUE(Hears(2));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_ACK"));
}

TEST_F(ScenarioPartner, IsNotConnectedWhileAStepIsPending) {
    PlayToWhoAnswers(
        "handshake skip ack\nexpect announcement syn-ack within 1min\n"
        "wait connected within 10ms\n");
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("no application connected within 10 ms"));
}

TEST_F(ScenarioPartner, StillMakesADelayedStepThatIsSetToSkipMeanwhile) {
    PlayToWhoAnswers(
        "handshake delay ack 1ms\nexpect announcement syn-ack within 1min\nhandshake skip ack\n"
        "wait connected within 50ms\n");
    ExpectEnd(1);
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN"));
}

TEST_F(ScenarioPartner, RepeatsSteps) {
    Play("handshake repeat syn 3\nhandshake repeat ack 2\nwait connected within 1min\n");
    ASSERT_TRUE(Hears(3));
    m_application.Announce(sim::names::SYN_ACK);
    ExpectEnd(0);
    ASSERT_TRUE(Hears(5));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_SYN", "_SYN", "_ACK", "_ACK"));
}

TEST_F(ScenarioPartner, MakesADelayedStepLater) {
    PlayToWhoAnswers(
        "handshake delay ack 50ms\nexpect announcement syn-ack within 1min\n"
        "wait connected within 1min\n");
    ExpectEnd(0);
    ASSERT_TRUE(Hears(2));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_ACK"));
}

TEST_F(ScenarioPartner, AnnouncesInAnyOrderByHand) {
    Play("handshake manual\njoin\nannounce ack\nannounce syn-ack\nannounce syn\n");
    ExpectEnd(0);
    ASSERT_TRUE(Hears(3));
    EXPECT_THAT(m_application.heard, ElementsAre("_ACK", "_SYN_ACK", "_SYN"));
}

TEST_F(ScenarioPartner, RestartsUnderANewName) {
    Play("join\nrestart\n");
    ASSERT_TRUE(Hears(2));
    ExpectEnd(0);
    EXPECT_NE(m_application.announcers.at(0), m_application.announcers.at(1));
}

TEST_F(ScenarioPartner, IsOneOfSeveral) {
    Play("partner one\njoin\npartner two\njoin\npartner one\nannounce ack\n");
    ASSERT_TRUE(Hears(1));
    const std::string first = m_application.middleware;
    ASSERT_TRUE(Hears(3));
    ExpectEnd(0);
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_SYN", "_ACK"));
    EXPECT_EQ(m_application.middleware, first);
}

TEST_F(ScenarioPartner, ReportsAnErrorReplyOfTheApplication) {
    PlayToWhoAnswers(
        "wait connected within 1min\nadd a=A\nexpect error \"does not exist\"\nadd a=A\n");
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 2 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 3 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("problem: \"AddItems failed: Object does not exist"));
}

TEST_F(ScenarioPartner, SendsSignalsWithAnyBytes) {
    PlayToWhoAnswers("wait connected within 1min\nsignal-hex 6f6b00\nwait 1ms\n");
    ASSERT_TRUE(Hears(3));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_ACK", "signal ok"));
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, ReportsAMalformedNotification) {
    PlayToWhoAnswers("wait connected within 1min\nexpect event ItemChanged within 1min\n");
    ASSERT_TRUE(Hears(2));
    m_application.Notify(m_application.middleware,
                         g_variant_new("(@ay)", g_variant_new_bytestring("x")));
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(),
                HasSubstr("received notification of 2 bytes without an id instead"));
}

}  // namespace
}  // namespace applist::test
