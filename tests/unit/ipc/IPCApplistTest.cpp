// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <string>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "fakes/FakePlatformLog.h"
#include "fakes/FakeTransport.h"
#include "ipc/IPCApplist.h"
#include "ipc/javamw-dbus-local.h"
#include "unit/ipc/WireBytes.h"

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

const std::string CALLED = "HandleMessage: IPC HandleMessage";
const std::string NOTIFIED = "HandleNotification: IPC HandleNotification";
const std::string CONNECTED = "HandleConnectionReady: HandleConnectionReady state=1, partner=:1.7";
const std::string REPORTS = "HandleConnectionReady: Calling connection ready callback";
const std::string NO_HANDLER = "INFO HandleMessage: callbackMessageObject object is NULL";
const std::string HANDLER_REMOVED = "INFO UnregisterOnMessage: Unregistered callbackMessageObject";
const std::string CONNECTION_HANDLER_REMOVED =
    "INFO UnregisterOnConnectionReady: Unregistered connectionReadyCallbackObject";
const std::string MESSAGE_2000 = Length(2000);

/// An adapter driven through the transport's hooks, as by the bus.
class IPCApplistAdapter : public testing::Test {
protected:
    IPCApplistAdapter() { ClearLog(); }

    void Register() {
        adapter.RegisterOnMessage(&handler, &Handler::OnMessage);
        adapter.RegisterOnConnectionReady(&handler, &Handler::OnConnectionReady);
    }
    void Unregister(Handler* registered) {
        adapter.UnregisterOnMessage(registered);
        adapter.UnregisterOnConnectionReady(registered);
    }

    static std::string Call(const std::string& frame) {
        std::vector<char> data = Bytes(frame);
        std::string response = Text(TheTransport().live->HandleMessage(data));
        EXPECT_EQ(Text(data), frame.size() < 4 ? frame : frame.substr(0, frame.size() - 4));
        return response;
    }
    static void Signal(const std::string& frame) {
        std::vector<char> data = Bytes(frame);
        TheTransport().live->HandleNotification(data);
        EXPECT_EQ(Text(data), frame.size() < 4 ? frame : frame.substr(0, frame.size() - 4));
    }
    static void Connect() { TheTransport().live->HandleConnectionReady(true, ":1.7"); }

    Handler handler;
    Handler stranger;
    Adapter adapter{"Channel"};
};

TEST_F(IPCApplistAdapter, CreatesTheTransportWithItsNameAndLogsNothingAtItsEnd) {
    {
        Adapter another("Another");
        EXPECT_EQ(TheTransport().name, "Another");
        EXPECT_EQ(Log().back().file, "IPCApplist.h");
        another.RegisterOnMessage(&handler, &Handler::OnMessage);
    }
    EXPECT_EQ(LogText(), Lines({"transport created: Another", "IPCApplist: IPCApplist",
                                "transport destroyed"}));
}

TEST_F(IPCApplistAdapter, PassesThePayloadAndTheSignedIdAtTheEndOfTheFrame) {
    Register();
    handler.response = Bytes(std::string("\x00\xFFresponse\x00", 11));
    EXPECT_EQ(Call("\x01\x02\x03" + MESSAGE_2000), Text(handler.response));
    Call("\xFF\xFF\xFF\xFF");
    Call(std::string("\x00\x00\x00\x80", 4));
    EXPECT_EQ(LogText(), Lines({CALLED, "message 2000: 01 02 03", CALLED, "message -1: ", CALLED,
                                "message " + std::to_string(INT_MIN) + ": "}));
}

TEST_F(IPCApplistAdapter, RefusesFramesWithoutAnId) {
    Register();
    handler.response = Bytes("unexpected");
    for (const char* frame : {"", "a", "ab", "abc"}) {
        ClearLog();
        EXPECT_EQ(Call(frame), "");
        Signal(frame);
        EXPECT_EQ(
            LogText(),
            Lines({CALLED, "ERROR HandleMessage: Data corrupted. Does not contain message id.",
                   NOTIFIED,
                   "ERROR HandleNotification: Data corrupted. Does not contain message id."}));
    }
}

TEST_F(IPCApplistAdapter, IgnoresEveryNotificationWithAnId) {
    Register();
    Signal("ab" + Length(1));
    EXPECT_EQ(
        LogText(),
        Lines({NOTIFIED, "INFO HandleNotification: callbackNotificationObject object is NULL"}));
}

TEST_F(IPCApplistAdapter, UsesTheHandlersThatRegisteredLast) {
    Register();
    adapter.RegisterOnMessage(&stranger, &Handler::OnOtherMessage);
    adapter.RegisterOnConnectionReady(&stranger, &Handler::OnOtherConnectionReady);
    Call(MESSAGE_2000);
    Connect();
    Unregister(&handler);
    EXPECT_EQ(LogText(),
              Lines({CALLED, "other message 2000", CONNECTED, REPORTS, "other ready :1.7"}));
}

TEST_F(IPCApplistAdapter, KeepsItsHandlersIfAnotherObjectUnregisters) {
    Register();
    Unregister(&stranger);
    Call(MESSAGE_2000);
    Connect();
    EXPECT_EQ(LogText(), Lines({CALLED, "message 2000: ", CONNECTED, REPORTS, "ready :1.7"}));
}

TEST_F(IPCApplistAdapter, AnswersEmptyAndReportsNoPartnerWithoutHandlers) {
    EXPECT_EQ(Call("\x01" + MESSAGE_2000), "");
    Connect();
    Register();
    Unregister(&handler);
    EXPECT_EQ(Call(MESSAGE_2000), "");
    Connect();
    EXPECT_EQ(LogText(), Lines({CALLED, NO_HANDLER, CONNECTED, HANDLER_REMOVED,
                                CONNECTION_HANDLER_REMOVED, CALLED, NO_HANDLER, CONNECTED}));
}

TEST_F(IPCApplistAdapter, LogsNothingIfNoHandlerIsRegistered) {
    Unregister(&handler);
    Unregister(nullptr);
    EXPECT_EQ(LogText(), "");
}

TEST_F(IPCApplistAdapter, DoesNotReportALostPartner) {
    Register();
    TheTransport().live->HandleConnectionReady(false, ":1.7");
    EXPECT_EQ(LogText(), "HandleConnectionReady: HandleConnectionReady state=0, partner=:1.7\n");
}

}  // namespace
}  // namespace applist::test
