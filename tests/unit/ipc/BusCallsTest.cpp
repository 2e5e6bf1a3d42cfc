// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Which functions of the bus library the transport calls, with which arguments and in which order,
// and when it holds its mutex.
#include <memory>
#include <new>

#include <gmock/gmock.h>

#include "fakes/FakeMutex.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/HeldBus.h"
#include "ipc/javamw-dbus-local.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
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

/// A channel that notes each report about a partner, and how many mutexes it holds then.
class NotingChannel : public JavaMWDbusLocal {
public:
    explicit NotingChannel(std::vector<std::string>& reports)
        : JavaMWDbusLocal("Applist"), m_reports(reports) {}
    void HandleConnectionReady(bool ready, const std::string& partner) override {
        m_reports.push_back(partner + (ready ? " connected, " : " lost, ") +
                            std::to_string(TheMutexes().held) + " held");
    }

private:
    std::vector<std::string>& m_reports;
};

class BusCallsOfAChannel : public testing::Test {
protected:
    BusCallsOfAChannel() {
        TheHeldBus() = HeldBus{};
        TheHeldBus().records = true;
        TheMutexes() = FakeMutex{};
        channel = std::make_unique<NotingChannel>(reports);
    }

    static std::vector<std::string> TakeCalls() { return std::exchange(TheHeldBus().calls, {}); }
    static void Announce(const std::string& ending, const std::string& partner) {
        TheHeldBus().Announce(BASE + ending, partner);
    }
    static void Connect(const std::string& partner) {
        Announce("_CLIENT_SYN", partner);
        Announce("_CLIENT_ACK", partner);
        TakeCalls();
    }
    void BroadcastAck() const {
        ClearLog();
        TakeCalls();
        std::string name = BASE + "_SERVICE_ACK";
        channel->BroadcastName(name);
    }

    std::vector<std::string> reports;
    std::unique_ptr<NotingChannel> channel;
};

TEST_F(BusCallsOfAChannel, SubscribeToSynSynAckAndAckAndThenAnnounce) {
    EXPECT_THAT(TakeCalls(), ElementsAre(Subscribe(Announcements("_CLIENT_SYN")),
                                         Subscribe(Announcements("_CLIENT_SYN_ACK")),
                                         Subscribe(Announcements("_CLIENT_ACK")),
                                         RequestName("_SERVICE_SYN"), ReleaseName("_SERVICE_SYN")));
}

TEST_F(BusCallsOfAChannel, HaveNoEffectIfTheConstructionFailsLater) {
    channel.reset();
    TheHeldBus() = HeldBus{};
    TheHeldBus().outOfMemoryIn = "RequestName";
    EXPECT_THROW(NotingChannel{reports}, std::bad_alloc);
    ClearLog();
    Announce("_CLIENT_SYN", ":1.7");
    const LogLine refused = Error("Empty user_data or connection not valid.\n\n");
    EXPECT_THAT(Log(), ElementsAre(testing::_, refused, testing::_, refused));
}

TEST_F(BusCallsOfAChannel, DoNotReleaseANameThatIsNotOwned) {
    for (const uint32_t code : {2U, 3U, 4U}) {
        TheHeldBus().answers["RequestName"] = code;
        BroadcastAck();
        EXPECT_THAT(TakeCalls(), ElementsAre(RequestName("_SERVICE_ACK")));
        EXPECT_EQ(Log().back(),
                  Error("Cannot own name due to return code = " + std::to_string(code) + "\n\n"));
    }
}

// 2 and 3: the name does not exist, or has another owner.
TEST_F(BusCallsOfAChannel, IgnoreTheCodeThatTheReleaseReturns) {
    for (const uint32_t code : {2U, 3U}) {
        TheHeldBus().answers["ReleaseName"] = code;
        BroadcastAck();
        EXPECT_THAT(TakeCalls(),
                    ElementsAre(RequestName("_SERVICE_ACK"), ReleaseName("_SERVICE_ACK")));
        EXPECT_EQ(Log().back(), Debug("Become primary owner for name. Releasing it.\n\n"));
    }
}

TEST_F(BusCallsOfAChannel, WatchThePartnerThenCreateItsProxyThenSubscribe) {
    TakeCalls();
    Announce("_CLIENT_SYN", ":1.7");
    EXPECT_THAT(TakeCalls(),
                ElementsAre("watch :1.7, flags 0",
                            std::string("proxy :1.7 ") + PATH + " " + INTERFACE + ", flags 1",
                            Subscribe(SignalsOf(":1.7")), RequestName("_SERVICE_SYN_ACK"),
                            ReleaseName("_SERVICE_SYN_ACK")));
}

TEST_F(BusCallsOfAChannel, ReleaseWatchProxyAndSubscriptionOfALostPartner) {
    Connect(":1.7");
    TheHeldBus().Vanish(":1.7");
    EXPECT_THAT(TakeCalls(), ElementsAre("unwatch :1.7", "release the proxy",
                                         "unsubscribe " + SignalsOf(":1.7")));
}

TEST_F(BusCallsOfAChannel, ReleaseAnnouncementsAndThenEachPartnerAtTheEnd) {
    Connect(":1.7");
    channel.reset();
    EXPECT_THAT(TakeCalls(), ElementsAre("unwatch " + Announcements("_CLIENT_SYN"),
                                         "unwatch " + Announcements("_CLIENT_SYN_ACK"),
                                         "unwatch " + Announcements("_CLIENT_ACK"), "unwatch :1.7",
                                         "release the proxy", "unsubscribe " + SignalsOf(":1.7"),
                                         testing::AllOf(HasSubstr(" GetId "),
                                                        testing::EndsWith(", timeout 1000"))));
}

TEST_F(BusCallsOfAChannel, DoNotFailWithTheProxy) {
    TheHeldBus().proxyFails = true;
    ClearLog();
    Announce("_CLIENT_SYN_ACK", ":1.7");
    EXPECT_THAT(LogText(), HasSubstr("Error while registering proxy  no proxy today\n"));
    TheHeldBus().Vanish(":1.7");
    EXPECT_THAT(reports, ElementsAre(":1.7 connected, 1 held", ":1.7 lost, 1 held"));
}

TEST_F(BusCallsOfAChannel, TakeASubscriptionWithoutAWatchForAnEstablishedPartner) {
    TheHeldBus().watchFails = true;
    Announce("_CLIENT_SYN", ":1.7");
    for (const char* ending : {"_CLIENT_SYN", "_CLIENT_SYN_ACK", "_CLIENT_ACK"}) {
        TakeCalls();
        Announce(ending, ":1.7");
        EXPECT_EQ(Log().back(), Debug("Owner :1.7 already exists\n")) << ending;
        EXPECT_THAT(TakeCalls(), IsEmpty()) << ending;
    }
    EXPECT_THAT(reports, IsEmpty());
}

TEST_F(BusCallsOfAChannel, HoldTheMutexDuringEachUpcall) {
    Announce("_CLIENT_SYN_ACK", ":1.7");
    Connect(":1.8");
    TheHeldBus().Vanish(":1.7");
    EXPECT_THAT(reports, ElementsAre(":1.7 connected, 1 held", ":1.8 connected, 1 held",
                                     ":1.7 lost, 1 held"));
    EXPECT_EQ(TheMutexes().held, 0);
}

}  // namespace
}  // namespace applist::test
