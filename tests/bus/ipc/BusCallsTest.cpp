// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Which functions of the bus library the transport calls, with which arguments and in which order,
// and when it holds its mutex. Own program, because it records these functions and can make them
// fail in ways that a bus cannot.
#include <memory>

#include <gmock/gmock.h>

#include "BusCalls.h"
#include "ChannelTest.h"
#include "fakes/FakeMutex.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Ready = std::pair<bool, std::string>;

constexpr const char* INTERFACE = "org.vantu.javamw.DbusCommunication";
const std::string BASE = "org.vantu.JavaMW.Applist";
const std::string DAEMON = "org.freedesktop.DBus";

std::string Announcements(const std::string& ending) {
    return DAEMON + " " + DAEMON + " NameOwnerChanged /org/freedesktop/DBus " + BASE + ending;
}

std::string SignalsOf(const std::string& partner) {
    return partner + " " + INTERFACE + " any " + PATH + " any";
}

std::string Subscribe(const std::string& subject) {
    return "subscribe " + subject + ", flags 0";
}

std::string CallDaemon(const std::string& method, const std::string& arguments) {
    return "call " + DAEMON + " /org/freedesktop/DBus " + DAEMON + " " + method + " " + arguments +
           " -> (u), flags 0, timeout -1";
}

std::string RequestName(const std::string& ending) {
    return CallDaemon("RequestName", "('" + BASE + ending + "', 4)");
}

std::string ReleaseName(const std::string& ending) {
    return CallDaemon("ReleaseName", "('" + BASE + ending + "',)");
}

class BusCallsOfAChannel : public ChannelTest {
protected:
    BusCallsOfAChannel() {
        TheBusCalls() = BusCalls{};
        TheBusCalls().connection = Connection();
        TheMutexes() = FakeMutex{};
    }

    static const std::vector<std::string>& Calls() { return TheBusCalls().calls; }
    static void ClearCalls() { TheBusCalls().calls.clear(); }

    static LogLine AlreadyExists(const ScriptedPeer& peer) {
        return Debug("Owner " + peer.UniqueName() + " already exists\n");
    }
};

TEST_F(BusCallsOfAChannel, SubscribeToSynSynAckAndAckAndThenAnnounce) {
    const RecordingChannel channel;
    EXPECT_THAT(Calls(), ElementsAre(Subscribe(Announcements("_CLIENT_SYN")),
                                     Subscribe(Announcements("_CLIENT_SYN_ACK")),
                                     Subscribe(Announcements("_CLIENT_ACK")),
                                     RequestName("_SERVICE_SYN"), ReleaseName("_SERVICE_SYN")));
}

TEST_F(BusCallsOfAChannel, DoNotReleaseANameThatIsNotOwned) {
    RecordingChannel channel;
    for (const uint32_t code : {2U, 3U, 4U}) {
        TheBusCalls().answers["RequestName"] = code;
        ClearCalls();
        ClearLog();
        std::string name = BASE + "_SERVICE_ACK";
        channel.BroadcastName(name);
        EXPECT_THAT(Calls(), ElementsAre(RequestName("_SERVICE_ACK")));
        EXPECT_EQ(Log().back(),
                  Error("Cannot own name due to return code = " + std::to_string(code) + "\n\n"));
    }
}

// 2 and 3: the name does not exist, or has another owner.
TEST_F(BusCallsOfAChannel, IgnoreTheCodeThatTheReleaseReturns) {
    RecordingChannel channel;
    for (const uint32_t code : {2U, 3U}) {
        TheBusCalls().answers = {{"RequestName", 1}, {"ReleaseName", code}};
        ClearCalls();
        ClearLog();
        std::string name = BASE + "_SERVICE_ACK";
        channel.BroadcastName(name);
        EXPECT_THAT(Calls(), ElementsAre(RequestName("_SERVICE_ACK"), ReleaseName("_SERVICE_ACK")));
        EXPECT_EQ(Log(), BroadcastLog("_SERVICE_ACK", Self()));
    }
}

TEST_F(BusCallsOfAChannel, WatchThePartnerThenCreateItsProxyThenSubscribe) {
    const RecordingChannel channel;
    ScriptedPeer peer(Address());
    const std::string& name = peer.UniqueName();
    ClearCalls();
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    EXPECT_THAT(Calls(), ElementsAre("watch " + name + ", flags 0",
                                     "proxy " + name + " " + PATH + " " + INTERFACE + ", flags 1",
                                     Subscribe(SignalsOf(name)), RequestName("_SERVICE_SYN_ACK"),
                                     ReleaseName("_SERVICE_SYN_ACK")));
}

TEST_F(BusCallsOfAChannel, ReleaseWatchProxyAndSubscriptionOfALostPartner) {
    const RecordingChannel channel;
    auto peer = std::make_unique<ScriptedPeer>(Address());
    const std::string name = peer->UniqueName();
    Connect(*peer);
    ClearCalls();
    peer.reset();
    ASSERT_TRUE(RunUntil([&] { return channel.readiness.size() == 2; }));
    EXPECT_THAT(Calls(), ElementsAre("unwatch " + name, "release the proxy",
                                     "unsubscribe " + SignalsOf(name)));
}

TEST_F(BusCallsOfAChannel, ReleaseAnnouncementsAndThenEachPartnerAtTheEnd) {
    auto channel = std::make_unique<RecordingChannel>();
    ScriptedPeer peer(Address());
    Connect(peer);
    ClearCalls();
    channel.reset();
    const std::string& name = peer.UniqueName();
    EXPECT_THAT(Calls(), ElementsAre("unwatch " + Announcements("_CLIENT_SYN"),
                                     "unwatch " + Announcements("_CLIENT_SYN_ACK"),
                                     "unwatch " + Announcements("_CLIENT_ACK"), "unwatch " + name,
                                     "release the proxy", "unsubscribe " + SignalsOf(name),
                                     testing::AllOf(testing::HasSubstr(" GetId "),
                                                    testing::EndsWith(", timeout 1000"))));
}

TEST_F(BusCallsOfAChannel, DoNotFailWithTheProxy) {
    TheBusCalls().proxyFails = true;
    const RecordingChannel channel;
    auto peer = std::make_unique<ScriptedPeer>(Address());
    const std::string name = peer->UniqueName();
    ClearLog();
    peer->Announce("_CLIENT_SYN_ACK");
    Settle(*peer);
    auto established = EstablishLog(name);
    established.insert(established.begin() + 3,
                       Error("Error while registering proxy  no proxy today\n\n"));
    EXPECT_EQ(Log(), Join({AnnouncementLog("SynAck", "_CLIENT_SYN_ACK", Self(), name), established,
                           BroadcastLog("_SERVICE_ACK", Self())}));
    peer.reset();
    EXPECT_TRUE(RunUntil([&] { return channel.readiness.size() == 2; }));
    EXPECT_THAT(channel.readiness, ElementsAre(Ready{true, name}, Ready{false, name}));
}

TEST_F(BusCallsOfAChannel, TakeASubscriptionWithoutAWatchForAnEstablishedPartner) {
    TheBusCalls().watchFails = true;
    const RecordingChannel channel;
    ScriptedPeer peer(Address());
    peer.Announce("_CLIENT_SYN");
    Settle(peer);
    for (const char* name : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        ClearCalls();
        peer.Announce(name);
        Settle(peer);
        EXPECT_EQ(Log().back(), AlreadyExists(peer)) << name;
        EXPECT_THAT(Calls(), IsEmpty()) << name;
    }
    EXPECT_THAT(channel.readiness, IsEmpty());
}

TEST_F(BusCallsOfAChannel, HoldTheMutexDuringEachUpcall) {
    RecordingChannel channel;
    std::vector<int> held;
    channel.onReady = [&held](bool, const std::string&) { held.push_back(TheMutexes().held); };
    auto answers = std::make_unique<ScriptedPeer>(Address());
    answers->Announce("_CLIENT_SYN_ACK");
    Settle(*answers);
    ScriptedPeer begins(Address());
    Connect(begins);
    answers.reset();
    ASSERT_TRUE(RunUntil([&] { return channel.readiness.size() == 3; }));
    EXPECT_THAT(held, ElementsAre(1, 1, 1));
    EXPECT_EQ(TheMutexes().held, 0);
}

}  // namespace
}  // namespace applist::test
