// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "link/BusLink.h"
#include "link/Protocol.h"
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

/// Describes a happening on one line with the bytes of its message.
std::string Line(const Happening& happening) {
    const bool message = happening.kind == Happening::Kind::Notified;
    if (message || happening.kind == Happening::Kind::Called) {
        return (message ? "notified " : "called ") + Text(happening.message) + ' ' +
               happening.application;
    }
    return happening.kind == Happening::Kind::Failed ? "failed " + happening.problem
                                                     : Describe(happening);
}

class BusLinkTest : public testing::Test {
protected:
    void SetUp() override { Start(); }

    void Start() {
        auto connection = OpenBus(m_bus.Address());
        ASSERT_TRUE(connection) << connection.error();
        m_connection = connection->get();
        m_link =
            std::make_unique<BusLink>(std::move(*connection), [this](const Happening& happening) {
                if (happening.kind != Happening::Kind::Announced) {
                    m_lines.push_back(Line(happening));
                }
            });
        EXPECT_TRUE(AwaitHeard("_CLIENT_SYN"));
        m_application.Forget();
    }

    bool AwaitHeard(const std::string& what) {
        return RunUntil(
            [&] { return !m_application.Heard().empty() && m_application.Heard().back() == what; });
    }
    bool AwaitLine(const std::string& line) {
        return RunUntil([&] { return !m_lines.empty() && m_lines.back() == line; });
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
        m_lines.clear();
        m_application.Forget();
    }

    PrivateBus m_bus;
    ScriptedPeer m_application{m_bus.Address(), "Applist", ScriptedPeer::APPLICATION};
    Lines m_lines;
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
    EXPECT_EQ(m_lines.size(), 1U);
}

TEST_F(BusLinkTest, AnswersTheCallsOfAnApplicationWithNothing) {
    Connect();
    std::optional<Bytes> reply;
    g_dbus_connection_call(
        m_application.Connection(), m_application.Announcer().c_str(), names::OBJECT_PATH,
        names::INTERFACE, names::METHOD, g_variant_new("(^ay)", "hello"), G_VARIANT_TYPE("(ay)"),
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
        [](GObject* source, GAsyncResult* result, void* bytes) {
            const GVariantPtr value(
                g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
            *static_cast<std::optional<Bytes>*>(bytes) = FromVariant(value.get());
        },
        &reply);
    ASSERT_TRUE(RunUntil([&] { return reply.has_value(); }));
    EXPECT_THAT(*reply, IsEmpty());
    EXPECT_THAT(m_lines, Contains(testing::StartsWith("called hello")));
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
    EXPECT_TRUE(AwaitLine("the bus closed the connection"));
}

}  // namespace
}  // namespace applist::sim
