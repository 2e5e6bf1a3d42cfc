// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ChannelTest.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <glib.h>
#include <iterator>
#include <mutex>
#include <regex>
#include <string_view>

namespace applist::test {
namespace {

// Records the messages of GLib.
struct Recorder {
    std::mutex mutex;
    std::vector<std::string> messages;
};

Recorder& TheRecorder() {
    static Recorder recorder;
    return recorder;
}

std::string Field(std::string_view key, const GLogField* fields, gsize count) {
    for (gsize i = 0; i < count; ++i) {
        if (fields[i].key == key) {
            return static_cast<const char*>(fields[i].value);
        }
    }
    return "";
}

GLogWriterOutput Write(GLogLevelFlags level, const GLogField* fields, gsize count, void* data) {
    if ((level & (G_LOG_LEVEL_WARNING | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_ERROR)) == 0) {
        return g_log_writer_default(level, fields, count, data);
    }
    auto& recorder = *static_cast<Recorder*>(data);
    const std::scoped_lock lock(recorder.mutex);
    recorder.messages.push_back(Field("GLIB_DOMAIN", fields, count) + ": " +
                                Field("MESSAGE", fields, count));
    return G_LOG_WRITER_HANDLED;
}

bool IsUnknownWatch(const std::string& message) {
    static const std::regex form(R"(GLib-GIO: Invalid id \d+ passed to g_bus_unwatch_name\(\))");
    return std::regex_match(message, form);
}

// True once the connection is destroyed.
std::atomic<bool> g_gone;

// May run on GIO's worker thread, which can hold the last reference.
void NoteTheEnd(void* /*data*/, GObject* /*connection*/) {
    g_gone = true;
    g_main_context_wakeup(nullptr);
}

}  // namespace

void RecordGlibMessages() {
    static std::once_flag once;
    std::call_once(once, [] { g_log_set_writer_func(Write, &TheRecorder(), nullptr); });
    const std::scoped_lock lock(TheRecorder().mutex);
    TheRecorder().messages.clear();
}

std::vector<std::string> GlibMessages() {
    const std::scoped_lock lock(TheRecorder().mutex);
    return TheRecorder().messages;
}

ChannelTest::ChannelTest(const std::string& rules) : m_bus(rules) {
    RecordGlibMessages();
    ClearLog();
    setenv(PrivateBus::ADDRESS_VARIABLE, Address().c_str(), 1);
    m_connection = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr);
    EXPECT_NE(m_connection, nullptr);
    // Unlike the program, the test continues when the bus ends.
    g_dbus_connection_set_exit_on_close(m_connection, FALSE);
}

ChannelTest::~ChannelTest() {
    // GIO shares one connection in a process, so the next test gets a new one only after this one
    // is destroyed.
    g_gone = false;
    g_object_weak_ref(G_OBJECT(m_connection), NoteTheEnd, nullptr);
    g_object_unref(m_connection);
    EXPECT_TRUE(RunUntil([] { return g_gone.load(); })) << "something keeps the connection";
    std::vector<std::string> messages = GlibMessages();
    EXPECT_EQ(std::erase_if(messages, IsUnknownWatch), 3 * m_channels);
    EXPECT_EQ(std::erase_if(messages,
                            [this](const std::string& message) {
                                return m_expected.first > 0 &&
                                       message.find(m_expected.second) != std::string::npos;
                            }),
              m_expected.first);
    EXPECT_EQ(messages, std::vector<std::string>{});
}

void ChannelTest::Settle(const ScriptedPeer& peer) {
    ASSERT_TRUE(RoundTrip(peer.Connection()));
    ASSERT_TRUE(RoundTrip(m_connection));  // The channel has reacted.
    ASSERT_TRUE(RoundTrip(m_connection));  // The bus has its messages.
    ASSERT_TRUE(RoundTrip(peer.Connection()));
}

void ChannelTest::Connect(ScriptedPeer& peer) {
    peer.Announce("_CLIENT_SYN");
    ASSERT_TRUE(peer.AwaitAnnouncement("_SERVICE_SYN_ACK"));
    peer.Announce("_CLIENT_ACK");
    Settle(peer);
}

Bytes ChannelTest::CallFrom(ScriptedPeer& peer, const Bytes& bytes) {
    const size_t before = peer.Traffic().size();
    peer.Send(Self(), PATH, bytes);
    if (!peer.AwaitTraffic(before + 1)) {
        ADD_FAILURE() << "no reply";
        return {};
    }
    const PeerEvent last = peer.Traffic().back();
    EXPECT_EQ(last.kind, PeerEvent::REPLY) << last;
    return last.bytes;
}

std::vector<LogLine> ChangeLog(const std::string& handler, const std::string& name,
                               const std::string& self, const std::string& from,
                               const std::string& to) {
    const std::string callback = "cb_" + handler + "NameOwnerChanged";
    return {Debug(callback + " called\n"),
            Debug(callback + " org.vantu.JavaMW.Applist" + name + " " + self + " from '" + from +
                  "' => '" + to + "' \n\n")};
}

std::vector<LogLine> AnnouncementLog(const std::string& handler, const std::string& name,
                                     const std::string& self, const std::string& owner) {
    return Join(
        {ChangeLog(handler, name, self, "", owner), ChangeLog(handler, name, self, owner, "")});
}

std::vector<LogLine> EstablishLog(const std::string& owner) {
    return {Debug("Monitor unique name " + owner + "\n\n"),
            Debug("Partner is available and has unique name " + owner + "\n\n"),
            Debug("Create proxy for " + owner + " on obj " + PATH + "\n\n"),
            Debug("Subscribe for signals from " + owner + " on object " + PATH + ".\n\n")};
}

std::vector<LogLine> BroadcastLog(const std::string& name, const std::string& self) {
    return {Debug("BroadcastName org.vantu.JavaMW.Applist" + name + " Public unique name " + self +
                  "\n\n"),
            Debug("Become primary owner for name. Releasing it.\n\n")};
}

std::vector<LogLine> ConstructionLog(const std::string& self) {
    return {Debug("Constructor\n\n"),
            Debug("XML parsed\n\n"),
            Debug("Getting connection to SYSTEM_BUS\n\n"),
            Debug("Working with unique name " + self + "\n\n"),
            Debug("Registering Object and Interface on path "
                  "/org/vantu/javamw/CommunicationChannel/Applist\n\n"),
            Debug("Monitoring org.vantu.JavaMW.Applist name waiting for communication partner\n\n"),
            Debug("Notify others using name org.vantu.JavaMW.Applist\n\n")};
}

std::vector<LogLine> Join(const std::vector<std::vector<LogLine>>& parts) {
    std::vector<LogLine> all;
    for (const auto& part : parts) {
        std::copy(part.begin(), part.end(), std::back_inserter(all));
    }
    return all;
}

}  // namespace applist::test
