// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A middleware that dies during the handshake, one that hangs, and several at once.
#include <csignal>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"
#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"

namespace applist::test {
namespace {

using sim::Event;
using sim::Function;
using testing::Optional;

/// The application's match rules: three for the announcements, and two for the middleware's name
/// and its signals.
constexpr size_t RULES_WITH_ONE_MIDDLEWARE = 5;

struct KillPoint {
    const char* name;
    /// True if the middleware is connected before the application starts.
    bool first;
    void (*handshake)(ScriptedPeer& peer);
};

void PrintTo(const KillPoint& point, std::ostream* out) {
    *out << point.name;
}

using AMiddleware = FaultTest;

class AMiddlewareThatDies : public FaultTest, public testing::WithParamInterface<KillPoint> {};

TEST_P(AMiddlewareThatDies, LeavesNoTraceInTheApplication) {
    const std::string address = m_set.systemBus().Address();
    auto dying = GetParam().first ? std::make_unique<ScriptedPeer>(address) : nullptr;
    StartApplication();
    if (!dying) {
        ASSERT_TRUE(m_set.WaitForWindow());
        dying = std::make_unique<ScriptedPeer>(address);
    }
    GetParam().handshake(*dying);
    dying.reset();
    const auto next = NewMiddleware();
    ASSERT_TRUE(next->AwaitApplication());
    EXPECT_EQ(GaugeOf(*next).Read().matchRules, RULES_WITH_ONE_MIDDLEWARE);
    ASSERT_TRUE(next->Ask(Function::AddItems, THREE));
    ExpectList(*next, THREE);
    ExpectCleanEnd();
}

INSTANTIATE_TEST_SUITE_P(
    AtAStep, AMiddlewareThatDies,
    testing::Values(KillPoint{"DuringItsSyn", false, [](auto& peer) { peer.Own("_CLIENT_SYN"); }},
                    KillPoint{"BeforeItsAck", false,
                              [](auto& peer) {
                                  peer.Announce("_CLIENT_SYN");
                                  EXPECT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN_ACK"));
                              }},
                    KillPoint{"DuringItsSynAck", true,
                              [](auto& peer) {
                                  EXPECT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN"));
                                  peer.Own("_CLIENT_SYN_ACK");
                              }},
                    KillPoint{"AfterItsSynAck", true,
                              [](auto& peer) {
                                  EXPECT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN"));
                                  peer.Announce("_CLIENT_SYN_ACK");
                                  EXPECT_TRUE(peer.AwaitAnnouncement("_SERVICE_ACK"));
                              }}),
    [](const auto& point) { return point.param.name; });

TEST_F(AMiddleware, ThatDiesBeforeTheReplyHasStillMadeItsCall) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    {
        ScriptedPeer dying(m_set.systemBus().Address());
        dying.Announce("_CLIENT_SYN");
        ASSERT_TRUE(dying.AwaitAnnouncement("_SERVICE_SYN_ACK"));
        dying.Announce("_CLIENT_ACK");
        application().Signal(SIGSTOP);
        dying.Send(dying.Announcer(), sim::names::OBJECT_PATH,
                   sim::EncodeCall(Function::AddItems, {{"d", "Item d"}}));
        ASSERT_TRUE(RoundTrip(dying.Connection()));
    }
    application().Signal(SIGCONT);
    const auto next = NewMiddleware();
    ASSERT_TRUE(next->AwaitApplication());
    sim::Items four = THREE;
    four.push_back({"d", "Item d"});
    ExpectList(*next, four);
    ExpectCleanEnd();
}

TEST_F(AMiddleware, ThatNeverCompletesTheHandshakeDelaysNoOther) {
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    ScriptedPeer silent(m_set.systemBus().Address());
    silent.Announce("_CLIENT_SYN");
    const auto other = NewMiddleware();
    ASSERT_TRUE(other->AwaitApplication());
    ExpectList(*other, THREE);
    ExpectCleanEnd();
}

// The stopped middleware does not read its messages; the bus queues them.
TEST_F(AMiddleware, ThatHangsDelaysNeitherTheViewerNorAnotherMiddleware) {
    m_set.ShowThreeItems();
    m_set.middleware().process().Signal(SIGSTOP);
    const auto other = NewMiddleware();
    ASSERT_TRUE(other->AwaitApplication());
    for (int round = 0; round < 500; ++round) {
        other->Call(Function::SetSelection, {THREE[static_cast<size_t>(round % 3)]});
    }
    ASSERT_TRUE(other->AwaitReplies());
    EXPECT_EQ(other->Failed(), 0U);
    ExpectList(*other, THREE);
    m_set.screen().TypeKey("F10");
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(AMiddleware, SharesTheListWithAnotherMiddleware) {
    constexpr int EACH = 50;
    StartApplication();
    const auto one = NewMiddleware();
    auto two = NewMiddleware();
    ASSERT_TRUE(one->AwaitApplication());
    ASSERT_TRUE(two->AwaitApplication());
    for (int number = 0; number < EACH; ++number) {
        one->Call(Function::AddItemAtEnd, {{"one" + std::to_string(number), "From one"}});
        two->Call(Function::AddItemAtEnd, {{"two" + std::to_string(number), "From two"}});
    }
    ASSERT_TRUE(one->AwaitReplies());
    ASSERT_TRUE(two->AwaitReplies());
    // Each receives the events that both have caused.
    EXPECT_TRUE(one->AwaitEvents(Event::ItemChanged, size_t{2} * EACH));
    EXPECT_TRUE(two->AwaitEvents(Event::ItemChanged, size_t{2} * EACH));
    const auto seen = one->Ask(Function::GetAllItems);
    ASSERT_THAT(seen, Optional(testing::SizeIs(2 * EACH)));
    EXPECT_EQ(two->Ask(Function::GetAllItems), seen);
    two.reset();
    ASSERT_TRUE(one->Ask(Function::RemoveAllItems));
    ASSERT_TRUE(one->Ask(Function::AddItems, THREE));
    ExpectList(*one, THREE);
    ExpectCleanEnd();
}

}  // namespace
}  // namespace applist::test
