// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Payloads of calls, replies and notifications.
#include <cstddef>
#include <new>

#include <gmock/gmock.h>

#include "ChannelTest.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Every byte value, repeated until the payload exceeds one read of a socket.
Bytes ManyBytes() {
    Bytes bytes(1 << 20);
    for (size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(i % 251);
    }
    return bytes;
}

std::string CallLine(const ScriptedPeer& peer, const std::string& path) {
    return "cb_MethodCall sender=" + peer.UniqueName() + " obj_path=" + path +
           " iface_name=org.vantu.javamw.DbusCommunication method_name=Send\n\n";
}

std::string SignalLine(const ScriptedPeer& peer, const std::string& name) {
    return "cb_SignalCall sender=" + peer.UniqueName() + " obj_path=" + PATH +
           " iface_name=org.vantu.javamw.DbusCommunication signal_name=" + name + "\n\n";
}

using Call = ChannelAndPeer;

TEST_F(Call, IsAnsweredWithTheResultOfTheHook) {
    channel.answer = [](const Bytes&) { return BytesFrom("answer"); };
    EXPECT_EQ(CallFrom(peer, BytesFrom("question")), BytesFrom("answer"));
    EXPECT_THAT(Log(), ElementsAre(Debug(CallLine(peer, PATH))));
    EXPECT_THAT(channel.messages, ElementsAre(BytesFrom("question")));
}

TEST_F(Call, CarriesEveryByteBothWays) {
    const Bytes bytes = ManyBytes();
    EXPECT_EQ(CallFrom(peer, bytes), bytes);
    EXPECT_EQ(channel.messages[0], bytes);
}

TEST_F(Call, GetsNoReplyOnAnotherPath) {
    g_autoptr(GDBusNodeInfo) node =
        g_dbus_node_info_new_for_xml(JavaMWDbusLocal::INTERFACE_XML, nullptr);
    const guint other =
        g_dbus_connection_register_object(Connection(), "/other", node->interfaces[0],
                                          &JavaMWDbusLocal::m_vtable, &channel, nullptr, nullptr);
    ASSERT_NE(other, 0U);
    ClearLog();
    peer.Send(Self(), "/other", BytesFrom("unanswered"));
    // Calls are handled in order, so the first one is done when the second one is answered.
    EXPECT_EQ(CallFrom(peer, BytesFrom("answered")), BytesFrom("answered"));
    EXPECT_THAT(Log(), ElementsAre(Debug(CallLine(peer, "/other")), Debug(CallLine(peer, PATH))));
    EXPECT_THAT(channel.messages, ElementsAre(BytesFrom("answered")));
    EXPECT_THAT(peer.Traffic(), testing::SizeIs(1));
    g_dbus_connection_unregister_object(Connection(), other);
}

TEST_F(Call, GetsTheEventsItCausedBeforeItsReply) {
    Connect(peer);
    channel.answer = [this](const Bytes&) {
        for (const char* text : {"first", "second"}) {
            Bytes event = BytesFrom(text);
            channel.SendNotification(event);
        }
        return BytesFrom("reply");
    };
    peer.Send(Self(), PATH, {});
    ASSERT_TRUE(peer.AwaitTraffic(3));
    const std::string signal = std::string("SendSignal ") + PATH;
    EXPECT_THAT(peer.Traffic(),
                ElementsAre(PeerEvent{PeerEvent::SIGNAL, signal, Self(), BytesFrom("first")},
                            PeerEvent{PeerEvent::SIGNAL, signal, Self(), BytesFrom("second")},
                            PeerEvent{PeerEvent::REPLY, "", "", BytesFrom("reply")}));
}

TEST_F(Call, GetsAnEmptyReplyWhenTheHookRunsOutOfMemory) {
    channel.answer = [this](const Bytes&) -> Bytes {
        channel.answer = [](const Bytes& message) { return message; };
        throw std::bad_alloc();
    };
    ClearLog();
    EXPECT_EQ(CallFrom(peer, BytesFrom("too much")), Bytes());
    EXPECT_EQ(CallFrom(peer, BytesFrom("next")), BytesFrom("next"));
    EXPECT_THAT(Log(),
                ElementsAre(Debug(CallLine(peer, PATH)), Error("Callback aborted: std::bad_alloc"),
                            Debug(CallLine(peer, PATH))));
}

TEST_F(Call, GetsTheLargestReplyThatTheBusCarries) {
    channel.answer = [](const Bytes&) { return Bytes(JavaMWDbusLocal::MAX_REPLY_BYTES); };
    EXPECT_EQ(CallFrom(peer, {}).size(), JavaMWDbusLocal::MAX_REPLY_BYTES);
}

// The bus would disconnect the application.
TEST_F(Call, GetsAnErrorInsteadOfALargerReply) {
    channel.answer = [](const Bytes&) { return Bytes(JavaMWDbusLocal::MAX_REPLY_BYTES + 1); };
    peer.Send(Self(), PATH, {});
    ASSERT_TRUE(peer.AwaitTraffic(1));
    const PeerEvent refused{
        PeerEvent::FAILURE, "org.freedesktop.DBus.Error.LimitsExceeded", "", {}};
    EXPECT_THAT(peer.Traffic(), ElementsAre(refused));
    EXPECT_THAT(Log(), ElementsAre(Debug(CallLine(peer, PATH)),
                                   Error("Reply with 33553921 bytes exceeds the limit of 33553920 "
                                         "bytes\n\n")));
    channel.answer = [](const Bytes& message) { return message; };
    EXPECT_EQ(CallFrom(peer, BytesFrom("next")), BytesFrom("next"));
}

using Notification = ChannelAndPeer;

TEST_F(Notification, IsSentInsteadOfAMessage) {
    Connect(peer);
    ClearLog();
    Bytes data = BytesFrom("x");
    EXPECT_THAT(channel.SendMessage(data), IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("Message sending is no supported!\n")));
    Settle(peer);
    EXPECT_THAT(peer.Traffic(), IsEmpty());
}

TEST_F(Notification, CarriesEveryByteToThePartner) {
    Connect(peer);
    Bytes bytes = ManyBytes();
    channel.SendNotification(bytes, peer.UniqueName());
    channel.Notify("", peer.UniqueName());
    ASSERT_TRUE(peer.AwaitTraffic(2));
    EXPECT_EQ(peer.Traffic()[0].bytes, bytes);
    EXPECT_EQ(peer.Traffic()[1].bytes, Bytes());
}

TEST_F(Notification, IsRefusedForEachRecordThatALookupLeft) {
    EXPECT_FALSE(channel.IsConnectionReady("nobody"));
    ClearLog();
    channel.Notify("");
    EXPECT_THAT(Log(), ElementsAre(Debug("Number of partners to iterate is: 1\n\n"),
                                   Debug("Sending notification for partner: nobody\n\n"),
                                   Error("Connection not set.\n\n")));
}

TEST_F(Notification, OfAPartnerReachesTheHook) {
    Connect(peer);
    ClearLog();
    const Bytes bytes = ManyBytes();
    peer.Notify(Self(), PATH, bytes);
    peer.Notify(Self(), PATH, {});
    Settle(peer);
    EXPECT_THAT(Log(), ElementsAre(Debug(SignalLine(peer, "SendSignal")),
                                   Debug(SignalLine(peer, "SendSignal"))));
    EXPECT_THAT(channel.notifications, ElementsAre(bytes, Bytes{}));
}

TEST_F(Notification, MayHaveAnyMember) {
    Connect(peer);
    ClearLog();
    peer.Emit(Self(), PATH, "Other", g_variant_new("(^ay)", "text"));
    Settle(peer);
    EXPECT_THAT(Log(), ElementsAre(Debug(SignalLine(peer, "Other"))));
    EXPECT_THAT(channel.notifications, ElementsAre(Bytes{'t', 'e', 'x', 't', '\0'}));
}

TEST_F(Notification, OfAnotherSenderIsIgnored) {
    ScriptedPeer forger(Address());
    Connect(peer);
    ClearLog();
    forger.Notify(Self(), PATH, BytesFrom("forged"));
    Settle(forger);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(channel.notifications, IsEmpty());
}

TEST_F(Notification, OnAnotherPathIsIgnored) {
    Connect(peer);
    ClearLog();
    peer.Notify(Self(), "/other", BytesFrom("astray"));
    Settle(peer);
    EXPECT_THAT(Log(), IsEmpty());
    g_autoptr(GVariant) content = g_variant_ref_sink(g_variant_new("(^ay)", "astray"));
    JavaMWDbusLocal::cb_SignalCall(Connection(), ":1.1", "/other", "i", "SendSignal", content,
                                   &channel);
    EXPECT_THAT(Log(), testing::SizeIs(1));
    EXPECT_THAT(channel.notifications, IsEmpty());
}

TEST_F(Notification, WithoutAByteArrayIsDropped) {
    Connect(peer);
    const std::pair<std::string, const char*> contents[] = {
        {"()", "()"}, {"(s)", "('text',)"}, {"(ayay)", "(@ay [], @ay [])"}, {"(ai)", "([1, 2],)"}};
    for (const auto& [form, text] : contents) {
        ClearLog();
        peer.Emit(Self(), PATH, "SendSignal", g_variant_new_parsed(text));
        Settle(peer);
        EXPECT_THAT(Log(),
                    ElementsAre(Debug(SignalLine(peer, "SendSignal")),
                                Error("Signal SendSignal from " + peer.UniqueName() + " carries " +
                                      form + " instead of (ay) and is ignored.\n\n")));
    }
    EXPECT_THAT(channel.notifications, IsEmpty());
    peer.Notify(Self(), PATH, BytesFrom("good"));
    Settle(peer);
    EXPECT_THAT(channel.notifications, ElementsAre(BytesFrom("good")));
}

using DefaultHook = ChannelTest;

TEST_F(DefaultHook, AnswersACallWithTheChannelsName) {
    const JavaMWDbusLocal channel("Applist");
    ScriptedPeer peer(Address());
    ClearLog();
    testing::internal::CaptureStdout();
    EXPECT_EQ(CallFrom(peer, BytesFrom("text")), BytesFrom("Default handler from :" + Self()));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "text\n");
    EXPECT_THAT(Log(), ElementsAre(Debug(CallLine(peer, PATH)),
                                   Debug("Default handler - HandleMessage = text\n\n")));
}

TEST_F(DefaultHook, PrintsANotification) {
    const JavaMWDbusLocal channel("Applist");
    ScriptedPeer peer(Address());
    ClearLog();
    Connect(peer);
    EXPECT_EQ(Log().back(), Debug("Default handler - HandleConnectionReady = 1\n\n"));
    ClearLog();
    testing::internal::CaptureStdout();
    peer.Notify(Self(), PATH, BytesFrom("text"));
    Settle(peer);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "text\n");
    EXPECT_THAT(Log(), ElementsAre(Debug(SignalLine(peer, "SendSignal")),
                                   Debug("Default handler - HandleNotification = text\n\n")));
    peer.Leave();
    EXPECT_TRUE(RunUntil([] {
        return testing::Matches(
            testing::Contains(Debug("Default handler - HandleConnectionReady = 0\n\n")))(Log());
    }));
}

}  // namespace
}  // namespace applist::test
