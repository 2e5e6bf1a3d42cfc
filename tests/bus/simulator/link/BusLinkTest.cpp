// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "bus/simulator/ScriptedApplication.h"
#include "link/BusLink.h"
#include "link/ChannelNames.h"
#include "support/GlibWait.h"
#include "support/PrivateBus.h"

namespace applist::sim {
namespace {

using test::PrivateBus;
using test::RoundTrip;
using test::RunUntil;
using test::ScriptedApplication;
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
        EXPECT_TRUE(AwaitHeard(names::SYN));
        m_application.heard.clear();
    }

    bool AwaitHeard(const std::string& what) {
        return RunUntil(
            [&] { return !m_application.heard.empty() && m_application.heard.back() == what; });
    }
    bool AwaitLine(const std::string& line) {
        return RunUntil(
            [&] { return !m_listener.lines.empty() && m_listener.lines.back() == line; });
    }
    // Waits until the link has received all messages of the application, and the application the
    // link's answers.
    void Settle() {
        ASSERT_TRUE(RoundTrip(m_application.connection()));
        ASSERT_TRUE(RoundTrip(m_connection));
        ASSERT_TRUE(RoundTrip(m_application.connection()));
    }
    void Connect() {
        m_application.Announce(names::SYN_ACK);
        ASSERT_TRUE(AwaitLine("connected " + m_application.name()));
        m_listener.lines.clear();
        m_application.heard.clear();
    }

    PrivateBus m_bus;
    ScriptedApplication m_application{m_bus.Address()};
    RecordingListener m_listener;
    std::unique_ptr<BusLink> m_link;
    GDBusConnection* m_connection = nullptr;  ///< The link's.
};

TEST_F(BusLinkTest, ConnectsAnApplicationThatRunsAlready) {
    m_application.Announce(names::SYN_ACK);
    EXPECT_TRUE(AwaitHeard(names::ACK));
    EXPECT_THAT(m_application.heard, ElementsAre(names::ACK));
    EXPECT_TRUE(AwaitLine("connected " + m_application.name()));
}

TEST_F(BusLinkTest, ConnectsAnApplicationThatStartsLater) {
    m_application.Announce(names::SYN);
    EXPECT_TRUE(AwaitHeard(names::SYN_ACK));
    EXPECT_THAT(m_listener.lines, IsEmpty());
    m_application.Announce(names::ACK);
    EXPECT_TRUE(AwaitLine("connected " + m_application.name()));
    EXPECT_THAT(m_application.heard, ElementsAre(names::SYN_ACK));
}

TEST_F(BusLinkTest, ConnectsOnceWhenBothStartTogether) {
    m_application.Announce(names::SYN);
    m_application.Announce(names::SYN_ACK);
    EXPECT_TRUE(AwaitHeard(names::ACK));
    EXPECT_THAT(m_application.heard, ElementsAre(names::SYN_ACK, names::ACK));
    m_application.Announce(names::ACK);
    Settle();
    EXPECT_THAT(m_listener.lines, ElementsAre("connected " + m_application.name()));
}

TEST_F(BusLinkTest, TakesOnlyTheReleaseOfANameAsAnAnnouncement) {
    const std::string name = std::string(names::SERVICE) + names::SYN;
    m_application.Own(name);
    Settle();
    EXPECT_THAT(m_application.heard, IsEmpty());
    m_application.Release(name);
    EXPECT_TRUE(AwaitHeard(names::SYN_ACK));
}

TEST_F(BusLinkTest, WaitsWhileAnotherMiddlewareAnnouncesUnderTheSameName) {
    const std::string name = std::string(names::CLIENT) + names::SYN_ACK;
    ScriptedApplication other(m_bus.Address());
    other.Own(name);
    m_application.Announce(names::SYN);
    Settle();
    EXPECT_THAT(m_application.heard, IsEmpty());
    other.Release(name);
    EXPECT_TRUE(RunUntil([&] { return m_application.heard.size() == 2; }));
    EXPECT_THAT(m_application.heard, ElementsAre(names::SYN_ACK, names::SYN_ACK));
    EXPECT_NE(m_application.middleware, other.name());
}

TEST_F(BusLinkTest, LosesAnApplicationAndTakesTheNext) {
    Connect();
    const std::string first = m_application.name();
    m_application.Leave();
    EXPECT_TRUE(AwaitLine("disconnected " + first));
    ScriptedApplication next(m_bus.Address());
    next.Announce(names::SYN);
    next.Announce(names::ACK);
    EXPECT_TRUE(AwaitLine("connected " + next.name()));
}

TEST_F(BusLinkTest, ForwardsOnlySignalsOfItsApplication) {
    ScriptedApplication stranger(m_bus.Address());
    Connect();
    const std::string middleware = m_application.middleware;
    stranger.Notify(middleware, g_variant_new("(^ay)", "strange"));
    ASSERT_TRUE(RoundTrip(stranger.connection()));
    m_application.Notify(middleware, g_variant_new("(s)", "no bytes"));
    m_application.Notify(
        middleware, g_variant_new("(@ay)", g_variant_new_array(G_VARIANT_TYPE_BYTE, nullptr, 0)));
    EXPECT_TRUE(AwaitLine("notified  " + m_application.name()));
    EXPECT_EQ(m_listener.lines.size(), 1U);
}

TEST_F(BusLinkTest, AnswersTheCallsOfAnApplication) {
    Connect();
    std::string reply;
    g_dbus_connection_call(
        m_application.connection(), m_application.middleware.c_str(), names::OBJECT_PATH,
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
    ScriptedApplication other(m_bus.Address());
    Connect();
    EXPECT_EQ(m_link->Emit(m_application.name(), Bytes{'h', 'i', '\0'}), "");
    EXPECT_TRUE(AwaitHeard("signal hi"));
    ASSERT_TRUE(RoundTrip(other.connection()));
    EXPECT_THAT(other.heard, Not(Contains("signal hi")));
}

TEST_F(BusLinkTest, ReportsACallWithoutAnAnswer) {
    Connect();
    std::string error;
    m_link->Call(m_application.name(), {}, [&](const Result<Bytes>& reply) {
        EXPECT_FALSE(reply);
        error = reply.error();
    });
    m_application.Leave();
    EXPECT_TRUE(RunUntil([&] { return !error.empty(); }));
}

TEST_F(BusLinkTest, CancelsItsCallsWhenItEnds) {
    Connect();
    bool told = false;
    m_link->Call(m_application.name(), {}, [&](const Result<Bytes>&) { told = true; });
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
