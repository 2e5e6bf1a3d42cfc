// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Statements of docs/protocol.md about two middlewares, lost partners and the bus, which the
// examples with one middleware cannot show.
#include <csignal>

#include <gio/gio.h>
#include <gmock/gmock.h>

#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"
#include "support/Television.h"

namespace applist::test {
namespace {

using testing::ElementsAre;

constexpr const char* PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";

const std::vector<char> EVENT_1 = {1, 0, 0, 0};
const std::vector<char> EVENT_2 = {2, 0, 0, 0};
const std::vector<char> EVENT_4 = {4, 0, 0, 0};
const std::vector<char> GET_ALL_ITEMS = {'\xD2', 7, 0, 0};
const std::vector<char> ADD_ONE_ITEM = {1, 0, 0, 0, 'A', 1, 0, 0, 0, 'a', '\xD5', 7, 0, 0};
const std::vector<char> ONE_ITEM = {1, 0, 0, 0, 'A', 1, 0, 0, 0, 'a'};

/// An application to which a first middleware is connected.
class TheProtocol : public testing::Test {
protected:
    void SetUp() override {
        m_application = m_set.StartApplication();
        ASSERT_TRUE(m_first.AwaitAnnouncement("_SERVICE_SYN"));
        m_name = m_first.Events().at(0).sender;
    }

    void Connect(ScriptedPeer& middleware) {
        middleware.Announce("_CLIENT_SYN_ACK");
        ASSERT_TRUE(RunUntil([&] { return Heard(middleware, Event(EVENT_4)); }));
    }

    PeerEvent Event(const std::vector<char>& bytes) const {
        return {PeerEvent::SIGNAL, std::string("SendSignal ") + PATH, m_name, bytes};
    }
    static PeerEvent Reply(const std::vector<char>& bytes) {
        return {PeerEvent::REPLY, "", "", bytes};
    }
    static PeerEvent Failure(const std::string& name) { return {PeerEvent::FAILURE, name, "", {}}; }
    static bool Heard(const ScriptedPeer& middleware, const PeerEvent& event) {
        return testing::Matches(testing::Contains(event))(middleware.Events());
    }
    /// Makes the middleware read the list after all messages sent to it before.
    void ReadList(ScriptedPeer& middleware) {
        const size_t before = middleware.Traffic().size();
        middleware.Send(m_name, PATH, GET_ALL_ITEMS);
        ASSERT_TRUE(middleware.AwaitTraffic(before + 1));
    }

    Television m_set;
    ScriptedPeer m_first{m_set.systemBus().Address()};
    ScriptedPeer m_second{m_set.systemBus().Address()};
    std::unique_ptr<ChildProcess> m_application;
    std::string m_name;  ///< The application's unique name.
};

TEST_F(TheProtocol, AnnouncesItsAnswersToAllButSendsEvent4ToOneMiddleware) {
    Connect(m_first);
    ReadList(m_second);
    const PeerEvent ack{PeerEvent::ANNOUNCEMENT, "_SERVICE_ACK", m_name, {}};
    EXPECT_TRUE(Heard(m_second, ack));
    EXPECT_THAT(m_second.Traffic(), ElementsAre(Reply({})));
}

TEST_F(TheProtocol, SendsEachEventAlsoToMiddlewaresThatDidNotCauseIt) {
    Connect(m_first);
    Connect(m_second);
    m_second.Send(m_name, PATH, ADD_ONE_ITEM);
    ReadList(m_first);
    ASSERT_TRUE(m_first.AwaitTraffic(4));
    EXPECT_THAT(m_first.Traffic(),
                testing::UnorderedElementsAre(Event(EVENT_4), Event(EVENT_1), Event(EVENT_2),
                                              testing::Field(&PeerEvent::kind, PeerEvent::REPLY)));
}

TEST_F(TheProtocol, ExecutesACallThatWantsNoReply) {
    Connect(m_first);
    g_autoptr(GDBusMessage) call =
        g_dbus_message_new_method_call(m_name.c_str(), PATH, INTERFACE, "Send");
    g_dbus_message_set_body(call, Payload(ADD_ONE_ITEM));
    g_dbus_message_set_flags(call, G_DBUS_MESSAGE_FLAGS_NO_REPLY_EXPECTED);
    ASSERT_TRUE(g_dbus_connection_send_message(m_first.Connection(), call,
                                               G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr));
    ASSERT_TRUE(m_first.AwaitTraffic(3));
    ReadList(m_first);
    EXPECT_THAT(m_first.Traffic(),
                ElementsAre(Event(EVENT_4), Event(EVENT_1), Event(EVENT_2), Reply(ONE_ITEM)));
}

TEST_F(TheProtocol, FailsTheCallsUnderWayWhenTheApplicationEnds) {
    m_application->Signal(SIGSTOP);
    m_first.Send(m_name, PATH, GET_ALL_ITEMS);
    ASSERT_TRUE(RoundTrip(m_first.Connection()));
    m_application->Signal(SIGKILL);
    ASSERT_TRUE(m_first.AwaitTraffic(1));
    EXPECT_THAT(m_first.Traffic(), ElementsAre(Failure("org.freedesktop.DBus.Error.NoReply")));
}

TEST_F(TheProtocol, FailsACallBeyondThoseThatTheBusKeepsUnderWay) {
    constexpr int CALLS_UNDER_WAY = 128;
    m_application->Signal(SIGSTOP);
    for (int i = 0; i <= CALLS_UNDER_WAY; ++i) {
        m_first.Send(m_name, PATH, GET_ALL_ITEMS);
    }
    ASSERT_TRUE(m_first.AwaitTraffic(1));
    EXPECT_THAT(m_first.Traffic(),
                ElementsAre(Failure("org.freedesktop.DBus.Error.LimitsExceeded")));
    m_application->Signal(SIGCONT);
    ASSERT_TRUE(m_first.AwaitTraffic(CALLS_UNDER_WAY + 1));
    EXPECT_THAT(m_first.Traffic(), testing::Contains(Reply({})).Times(CALLS_UNDER_WAY));
}

TEST_F(TheProtocol, LosesOnlyAMiddlewareThatSendsMoreThanTheBusAllows) {
    m_first.Send(m_name, PATH, std::vector<char>(size_t{32} << 20U));
    ASSERT_TRUE(
        RunUntil([this] { return g_dbus_connection_is_closed(m_first.Connection()) != FALSE; }));
    ReadList(m_second);
    EXPECT_THAT(m_second.Traffic(), ElementsAre(Reply({})));
}

}  // namespace
}  // namespace applist::test
