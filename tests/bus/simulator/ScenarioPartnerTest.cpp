// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What an application sees of a scenario, step by step.
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/ScriptedApplication.h"
#include "support/ChildProcess.h"
#include "support/GlibWait.h"
#include "support/PrivateBus.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ScenarioPartner : public testing::Test {
protected:
    void Play(const std::string& text) {
        const std::string path = (m_folder.path() / "it").string();
        std::ofstream(path) << text;
        m_run = std::make_unique<ChildProcess>(std::vector<std::string>{
            BuiltProgram("javamw-sim"), "run", "--address=" + m_bus.Address(), path});
    }

    bool Hears(size_t count) {
        return RunUntil([&] { return m_application.heard.size() >= count; });
    }
    void ExpectEnd(int status) {
        EXPECT_EQ(m_run->WaitForExit(), status) << m_run->Output() << m_run->Errors();
    }

    PrivateBus m_bus;
    TemporaryDir m_folder;
    ScriptedApplication m_application{m_bus.Address()};
    std::unique_ptr<ChildProcess> m_run;
};

TEST_F(ScenarioPartner, SkipsTheStepThatItIsToldTo) {
    Play("handshake skip syn\nexpect announcement syn within 1min\nwait connected within 1min\n");
    // Nothing comes by itself; the application is heard all the same.
    ASSERT_TRUE(RunUntil([&] {
        m_application.Announce(sim::names::SYN);
        return m_application.heard.size() >= 1;
    }));
    EXPECT_EQ(m_application.heard.front(), "_SYN_ACK");
    m_application.Announce(sim::names::ACK);
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, CompletesByHandWhatItSkipped) {
    Play(
        "handshake skip ack\nexpect announcement syn-ack within 1min\nannounce ack\n"
        "wait connected within 1min\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
    ExpectEnd(0);
    ASSERT_TRUE(Hears(2));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_ACK"));
}

TEST_F(ScenarioPartner, IsNotConnectedWhileItOwesAStep) {
    Play(
        "handshake skip ack\nexpect announcement syn-ack within 1min\n"
        "wait connected within 10ms\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("no application connected within 10 ms"));
}

TEST_F(ScenarioPartner, RepeatsSteps) {
    Play("handshake repeat syn 3\nhandshake repeat ack 2\nwait connected within 1min\n");
    ASSERT_TRUE(Hears(3));
    m_application.Announce(sim::names::SYN_ACK);
    ExpectEnd(0);
    ASSERT_TRUE(Hears(5));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_SYN", "_SYN", "_ACK", "_ACK"));
}

TEST_F(ScenarioPartner, MakesADelayedStepInTheEnd) {
    Play(
        "handshake delay ack 50ms\nexpect announcement syn-ack within 1min\n"
        "wait connected within 1min\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
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
    ASSERT_TRUE(Hears(1));
    const std::string first = m_application.middleware;
    ASSERT_TRUE(Hears(2));
    ExpectEnd(0);
    EXPECT_NE(m_application.middleware, first);
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

TEST_F(ScenarioPartner, SaysThatTheApplicationAnsweredWithAnError) {
    Play("wait connected within 1min\nadd a=A\nexpect error \"does not exist\"\nadd a=A\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 2 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("\nok 3 - "));
    EXPECT_THAT(m_run->Output(), HasSubstr("problem: \"AddItems failed: Object does not exist"));
}

TEST_F(ScenarioPartner, SendsSignalsWithAnyBytes) {
    Play("wait connected within 1min\nsignal-hex 6f6b00\nwait 1ms\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
    ASSERT_TRUE(Hears(3));
    EXPECT_THAT(m_application.heard, ElementsAre("_SYN", "_ACK", "signal ok"));
    ExpectEnd(0);
}

TEST_F(ScenarioPartner, TellsANotificationThatIsNone) {
    Play("wait connected within 1min\nexpect event ItemChanged within 1min\n");
    ASSERT_TRUE(Hears(1));
    m_application.Announce(sim::names::SYN_ACK);
    ASSERT_TRUE(Hears(2));
    m_application.Notify(m_application.middleware,
                         g_variant_new("(@ay)", g_variant_new_bytestring("x")));
    ExpectEnd(1);
    EXPECT_THAT(m_run->Output(), HasSubstr("came notification of 2 bytes without an id instead"));
}

}  // namespace
}  // namespace applist::test
