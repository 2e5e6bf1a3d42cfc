// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "link/BusLink.h"
#include "link/ChannelNames.h"
#include "support/GlibWait.h"
#include "support/PrivateBus.h"
#include "support/ScriptedPeer.h"

namespace applist::sim {
namespace {

using test::PrivateBus;
using test::RoundTrip;
using test::RunUntil;
using test::ScriptedPeer;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

using Lines = std::vector<std::string>;

std::string Text(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}
Bytes ToBytes(const std::string& text) {
    return {text.begin(), text.end()};
}

/// Records the events of the link. Answers each call with "re:" and the bytes of the call.
class RecordingListener : public BusLinkListener {
public:
    void Connected(const std::string& application) override { Note("connected", application); }
    void Disconnected(const std::string& application) override {
        Note("disconnected", application);
    }
    void Notified(const std::string& application, const Bytes& message) override {
        Note("notified " + Text(message), application);
    }
    Bytes Called(const std::string& application, const Bytes& message) override {
        Note("called " + Text(message), application);
        return ToBytes("re:" + Text(message));
    }
    void LinkFailed(const std::string& error) override { lines.push_back("failed " + error); }
    void BusLost() override { lines.emplace_back("bus lost"); }

    Lines lines;

private:
    void Note(const std::string& what, const std::string& application) {
        lines.push_back(what + " " + application);
    }
};

class BusLinkTest : public testing::Test {
protected:
    void SetUp() override { Start(); }

    void Start() {
        auto connection = OpenBus(m_bus.Address());
        ASSERT_TRUE(connection) << connection.error();
        m_connection = connection->get();
        m_link = std::make_unique<BusLink>(std::move(*connection), m_listener);
        EXPECT_TRUE(AwaitHeard("_CLIENT_SYN"));
        m_application.Forget();
    }

    bool AwaitHeard(const std::string& what) {
        return RunUntil(
            [&] { return !m_application.Heard().empty() && m_application.Heard().back() == what; });
    }
    bool AwaitLine(const std::string& line) {
        return RunUntil(
            [&] { return !m_listener.lines.empty() && m_listener.lines.back() == line; });
    }
    // Waits until the link has received all messages of the application, and the application the
    // link's answers.
    void Settle() {
        ASSERT_TRUE(RoundTrip(m_application.Connection()));
        ASSERT_TRUE(RoundTrip(m_connection));
        ASSERT_TRUE(RoundTrip(m_application.Connection()));
    }
    void Connect() {
        m_application.Announce("_SERVICE_SYN_ACK");
        ASSERT_TRUE(AwaitLine("connected " + m_application.UniqueName()));
        m_listener.lines.clear();
        m_application.Forget();
    }

    PrivateBus m_bus;
    ScriptedPeer m_application{m_bus.Address(), "Applist", ScriptedPeer::APPLICATION};
    RecordingListener m_listener;
    std::unique_ptr<BusLink> m_link;
    GDBusConnection* m_connection = nullptr;  ///< The link's.
};

TEST_F(BusLinkTest, TakesOnlyTheReleaseOfANameAsAnAnnouncement) {
    const std::string name = "_SERVICE_SYN";
    m_application.Own(name);
    Settle();
    EXPECT_THAT(m_application.Heard(), IsEmpty());
    m_application.Release(name);
    EXPECT_TRUE(AwaitHeard("_CLIENT_SYN_ACK"));
}

TEST_F(BusLinkTest, WaitsWhileAnotherMiddlewareAnnouncesUnderTheSameName) {
    const std::string name = "_CLIENT_SYN_ACK";
    ScriptedPeer other(m_bus.Address());
    other.Own(name);
    m_application.Announce("_SERVICE_SYN");
    Settle();
    EXPECT_THAT(m_application.Heard(), IsEmpty());
    other.Release(name);
    EXPECT_TRUE(RunUntil([&] { return m_application.Heard().size() == 2; }));
    EXPECT_THAT(m_application.Heard(), ElementsAre("_CLIENT_SYN_ACK", "_CLIENT_SYN_ACK"));
    EXPECT_NE(m_application.Announcer(), other.UniqueName());
}

TEST_F(BusLinkTest, LosesAnApplicationAndTakesTheNext) {
    Connect();
    const std::string first = m_application.UniqueName();
    m_application.Leave();
    EXPECT_TRUE(AwaitLine("disconnected " + first));
    ScriptedPeer next(m_bus.Address(), "Applist", ScriptedPeer::APPLICATION);
    next.Announce("_SERVICE_SYN");
    next.Announce("_SERVICE_ACK");
    EXPECT_TRUE(AwaitLine("connected " + next.UniqueName()));
}

TEST_F(BusLinkTest, ForwardsOnlySignalsOfItsApplication) {
    ScriptedPeer stranger(m_bus.Address(), "Applist", ScriptedPeer::APPLICATION);
    Connect();
    const std::string middleware = m_application.Announcer();
    stranger.Notify(middleware, names::OBJECT_PATH, {'s'});
    ASSERT_TRUE(RoundTrip(stranger.Connection()));
    m_application.Emit(middleware, names::OBJECT_PATH, names::SIGNAL, g_variant_new("(s)", "x"));
    m_application.Notify(middleware, names::OBJECT_PATH, {});
    EXPECT_TRUE(AwaitLine("notified  " + m_application.UniqueName()));
    EXPECT_EQ(m_listener.lines.size(), 1U);
}

TEST_F(BusLinkTest, AnswersTheCallsOfAnApplication) {
    Connect();
    std::string reply;
    g_dbus_connection_call(
        m_application.Connection(), m_application.Announcer().c_str(), names::OBJECT_PATH,
        names::INTERFACE, names::METHOD, g_variant_new("(^ay)", "hello"), G_VARIANT_TYPE("(ay)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        [](GObject* source, GAsyncResult* result, void* text) {
            const GVariantPtr value(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            const GVariantPtr array(g_variant_get_child_value(value.get(), 0));
            *static_cast<std::string*>(text) = g_variant_get_bytestring(array.get());
        },
        &reply);
    EXPECT_TRUE(RunUntil([&] { return !reply.empty(); }));
    EXPECT_EQ(reply, "re:hello");
}

TEST_F(BusLinkTest, SignalsToOneApplication) {
    ScriptedPeer other(m_bus.Address(), "Applist", ScriptedPeer::APPLICATION);
    Connect();
    EXPECT_EQ(m_link->Emit(m_application.UniqueName(), Bytes{'h', 'i'}), "");
    EXPECT_TRUE(AwaitHeard("signal hi"));
    ASSERT_TRUE(RoundTrip(other.Connection()));
    EXPECT_THAT(other.Heard(), Not(Contains("signal hi")));
}

TEST_F(BusLinkTest, ReportsACallWithoutAnAnswer) {
    Connect();
    std::string error;
    m_link->Call(m_application.UniqueName(), {}, [&](const Result<Bytes>& reply) {
        EXPECT_FALSE(reply);
        error = reply.error();
    });
    m_application.Leave();
    EXPECT_TRUE(RunUntil([&] { return !error.empty(); }));
}

TEST_F(BusLinkTest, CancelsItsCallsWhenItEnds) {
    Connect();
    bool told = false;
    m_link->Call(m_application.UniqueName(), {}, [&](const Result<Bytes>&) { told = true; });
    m_link.reset();
    EXPECT_FALSE(told);
}

TEST_F(BusLinkTest, ReportsTheLossOfTheBus) {
    m_application.Leave();
    m_bus.Stop();
    EXPECT_TRUE(AwaitLine("bus lost"));
}

}  // namespace
}  // namespace applist::sim
