// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "fakes/FakePlatformLog.h"
#include "fakes/FakeTransport.h"
#include "ipc/IPCApplist.h"
#include "ipc/javamw-dbus-local.h"
#include "unit/ipc/WireBytes.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

class Handler {
public:
    std::vector<char> OnMessage(int id, const std::vector<char>& payload) {
        Note("message " + std::to_string(id) + ": " + ToHex(payload));
        return response;
    }
    std::vector<char> OnOtherMessage(int id, const std::vector<char>& /*payload*/) {
        Note("other message " + std::to_string(id));
        return {};
    }
    void OnConnectionReady(const std::string& partner) { Note("ready " + partner); }
    void OnOtherConnectionReady(const std::string& partner) { Note("other ready " + partner); }

    std::vector<char> response;
};

using Adapter = IPCApplist<JavaMWDbusLocal, Handler>;
static_assert(std::is_convertible_v<Adapter*, JavaMWDbusLocal*>);

/// An adapter driven through the transport's hooks, as by the bus.
class IPCApplistAdapter : public testing::Test {
protected:
    IPCApplistAdapter() { ClearLog(); }

    void Register() {
        adapter.RegisterOnMessage(&handler, &Handler::OnMessage);
        adapter.RegisterOnConnectionReady(&handler, &Handler::OnConnectionReady);
    }

    static std::string Call(const std::string& frame) {
        std::vector<char> data = Bytes(frame);
        return Text(TheTransport().live->HandleMessage(data));
    }

    static void Signal(const std::string& frame) {
        std::vector<char> data = Bytes(frame);
        TheTransport().live->HandleNotification(data);
    }

    Handler handler;
    Handler stranger;
    Adapter adapter{"Channel"};
};

TEST_F(IPCApplistAdapter, BuildsTheTransportWithItsNameAndThenLogs) {
    const Adapter another("Another");
    EXPECT_EQ(TheTransport().name, "Another");
    EXPECT_THAT(Log(), ElementsAre(Event("transport created: Another"), Debug("IPCApplist")));
}

TEST_F(IPCApplistAdapter, LeavesNothingToSayAtItsEnd) {
    {
        Adapter another("Another");
        another.RegisterOnMessage(&handler, &Handler::OnMessage);
        ClearLog();
    }
    EXPECT_THAT(Log(), ElementsAre(Event("transport destroyed")));
}

TEST_F(IPCApplistAdapter, TakesTheMessageIdOffTheEnd) {
    Register();
    EXPECT_EQ(Call(std::string("\x01\x02\x03\xD0\x07\x00\x00", 7)), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleMessage"), Event("message 2000: 01 02 03")));
}

TEST_F(IPCApplistAdapter, ShortensTheFrameInPlace) {
    std::vector<char> data = Bytes(std::string("ab\xD0\x07\x00\x00", 6));
    TheTransport().live->HandleMessage(data);
    EXPECT_EQ(Text(data), "ab");
}

TEST_F(IPCApplistAdapter, TakesTheIdForSigned) {
    Register();
    Call("\xFF\xFF\xFF\xFF");
    Call(std::string("\x00\x00\x00\x80", 4));
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleMessage"), Event("message -1: "),
                                   Debug("IPC HandleMessage"),
                                   Event("message " + std::to_string(INT_MIN) + ": ")));
}

TEST_F(IPCApplistAdapter, ReturnsTheResponseUnchanged) {
    Register();
    handler.response = Bytes(std::string("\x00\xFFresponse\x00", 11));
    EXPECT_EQ(Call(std::string("\xD0\x07\x00\x00", 4)), std::string("\x00\xFFresponse\x00", 11));
}

TEST_F(IPCApplistAdapter, RefusesFramesWithoutAnId) {
    Register();
    handler.response = Bytes("unexpected");
    for (const char* frame : {"", "a", "ab", "abc"}) {
        ClearLog();
        EXPECT_EQ(Call(frame), "");
        EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleMessage"),
                                       Error("Data corrupted. Does not contain message id.")));
    }
}

TEST_F(IPCApplistAdapter, AnswersEmptyWithoutAHandler) {
    EXPECT_EQ(Call(std::string("\x01\xD0\x07\x00\x00", 5)), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleMessage"),
                                   Info("callbackMessageObject object is NULL")));
}

TEST_F(IPCApplistAdapter, LogsThePositionOfItsLines) {
    Call("abc");
    Signal("abc");
    Register();
    TheTransport().live->HandleConnectionReady(true, ":1.7");
    adapter.UnregisterOnMessage(&handler);
    adapter.UnregisterOnConnectionReady(&handler);
    EXPECT_THAT(LogFunctions(),
                ElementsAre("HandleMessage", "HandleMessage", "HandleNotification",
                            "HandleNotification", "HandleConnectionReady", "HandleConnectionReady",
                            "UnregisterOnMessage", "UnregisterOnConnectionReady"));
    EXPECT_EQ(Log().front().file, "IPCApplist.h");
}

TEST_F(IPCApplistAdapter, AsksTheHandlerThatRegisteredLast) {
    Register();
    adapter.RegisterOnMessage(&stranger, &Handler::OnOtherMessage);
    Call(std::string("\xD0\x07\x00\x00", 4));
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleMessage"), Event("other message 2000")));
}

TEST_F(IPCApplistAdapter, ReportsPartnersToTheHandlerThatRegisteredLast) {
    Register();
    adapter.RegisterOnConnectionReady(&stranger, &Handler::OnOtherConnectionReady);
    TheTransport().live->HandleConnectionReady(true, ":1.7");
    adapter.UnregisterOnConnectionReady(&handler);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("HandleConnectionReady state=1, partner=:1.7"),
                            Debug("Calling connection ready callback"), Event("other ready :1.7")));
}

TEST_F(IPCApplistAdapter, ForgetsTheHandlerThatUnregisters) {
    Register();
    adapter.UnregisterOnMessage(&handler);
    EXPECT_EQ(Call(std::string("\xD0\x07\x00\x00", 4)), "");
    EXPECT_THAT(Log(),
                ElementsAre(Info("Unregistered callbackMessageObject"), Debug("IPC HandleMessage"),
                            Info("callbackMessageObject object is NULL")));
}

TEST_F(IPCApplistAdapter, KeepsItsHandlerWhenAnotherOneUnregisters) {
    Register();
    adapter.UnregisterOnMessage(&stranger);
    adapter.UnregisterOnConnectionReady(&stranger);
    EXPECT_THAT(Log(), IsEmpty());
    Call(std::string("\xD0\x07\x00\x00", 4));
    TheTransport().live->HandleConnectionReady(true, ":1.7");
    EXPECT_THAT(Log(),
                ElementsAre(Debug("IPC HandleMessage"), Event("message 2000: "),
                            Debug("HandleConnectionReady state=1, partner=:1.7"),
                            Debug("Calling connection ready callback"), Event("ready :1.7")));
}

TEST_F(IPCApplistAdapter, LogsNothingWhenNoHandlerIsRegistered) {
    adapter.UnregisterOnMessage(&handler);
    adapter.UnregisterOnConnectionReady(&handler);
    adapter.UnregisterOnMessage(nullptr);
    adapter.UnregisterOnConnectionReady(nullptr);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(IPCApplistAdapter, DropsEveryNotification) {
    Register();
    std::vector<char> data = Bytes(std::string("ab\x01\x00\x00\x00", 6));
    TheTransport().live->HandleNotification(data);
    EXPECT_EQ(Text(data), "ab");
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleNotification"),
                                   Info("callbackNotificationObject object is NULL")));
}

TEST_F(IPCApplistAdapter, RefusesNotificationsWithoutAnId) {
    Signal("abc");
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleNotification"),
                                   Error("Data corrupted. Does not contain message id.")));
}

TEST_F(IPCApplistAdapter, DoesNotReportALostPartner) {
    Register();
    TheTransport().live->HandleConnectionReady(false, ":1.7");
    EXPECT_THAT(Log(), ElementsAre(Debug("HandleConnectionReady state=0, partner=:1.7")));
}

TEST_F(IPCApplistAdapter, ReportsNoPartnerWithoutAHandler) {
    Register();
    adapter.UnregisterOnConnectionReady(&handler);
    TheTransport().live->HandleConnectionReady(true, ":1.7");
    EXPECT_THAT(Log(), ElementsAre(Info("Unregistered connectionReadyCallbackObject"),
                                   Debug("HandleConnectionReady state=1, partner=:1.7")));
}

}  // namespace
}  // namespace applist::test
