// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gio/gio.h>
#include <gtest/gtest.h>

#include "fakes/FakePlatformLog.h"
#include "ipc/javamw-dbus-local.h"
#include "support/GlibWait.h"
#include "support/PrivateBus.h"
#include "support/ScriptedPeer.h"

namespace applist::test {

using Bytes = std::vector<char>;

constexpr const char* PATH = "/org/vantu/javamw/CommunicationChannel/Applist";

/// Starts recording this process' GLib warnings, critical messages and errors instead of printing
/// them, or discards those recorded so far. Any thread.
void RecordGlibMessages();
/// The recorded messages, oldest first, such as "GLib-GIO: Invalid id 7 passed to ...".
std::vector<std::string> GlibMessages();

/// A channel that keeps what its hooks receive, in order of arrival per hook.
class RecordingChannel : public JavaMWDbusLocal {
public:
    explicit RecordingChannel(std::string name = "Applist") : JavaMWDbusLocal(std::move(name)) {}

    std::vector<Bytes> messages;
    std::vector<Bytes> notifications;
    std::vector<std::pair<bool, std::string>> readiness;

    /// Sends text to one partner, or to all.
    void Notify(const std::string& text, const std::string& partner) {
        Bytes bytes = BytesFrom(text);
        SendNotification(bytes, partner);
    }
    void Notify(const std::string& text) {
        Bytes bytes = BytesFrom(text);
        SendNotification(bytes);
    }

    /// The answer to a message; the message itself unless a test says otherwise.
    std::function<Bytes(const Bytes&)> answer = [](const Bytes& message) { return message; };
    /// Called in HandleConnectionReady().
    std::function<void(bool, const std::string&)> onReady = [](bool, const std::string&) {};

    Bytes HandleMessage(Bytes& data) override {
        messages.push_back(data);
        return answer(data);
    }
    void HandleNotification(Bytes& data) override { notifications.push_back(data); }
    void HandleConnectionReady(bool ready, const std::string& partner) override {
        readiness.emplace_back(ready, partner);
        onReady(ready, partner);
    }
};

/// Makes a private bus the system bus of this process. Holds a second reference to the connection
/// that channels share, so that tests can check what channels leave on it.
///
/// The destructor checks that the connection is destroyed and that GLib logged only the expected
/// messages: three for each channel with a connection, because channels release three ids with the
/// wrong function.
class ChannelTest : public testing::Test {
public:
    ~ChannelTest() override;
    ChannelTest(const ChannelTest&) = delete;
    ChannelTest& operator=(const ChannelTest&) = delete;

protected:
    /// rules: see PrivateBus.
    explicit ChannelTest(const std::string& rules = "");

    PrivateBus& TheBus() { return m_bus; }
    const std::string& Address() const { return m_bus.Address(); }
    GDBusConnection* Connection() const { return m_connection; }
    /// The unique name of the application's connection.
    std::string Self() const { return g_dbus_connection_get_unique_name(m_connection); }

    /// Runs the main context until the channel has handled everything that peer sent, and peer has
    /// received the channel's messages.
    void Settle(const ScriptedPeer& peer);
    /// Completes the handshake of a middleware that starts after the application.
    void Connect(ScriptedPeer& peer);
    /// The answer to a "Send" from peer.
    Bytes CallFrom(ScriptedPeer& peer, const Bytes& bytes);

    /// Sets the number of channels with a connection that the test creates; the default is 1.
    void ExpectChannels(size_t count) { m_channels = count; }
    /// Expects count messages from GLib that contain text.
    void ExpectGlibMessages(size_t count, const std::string& text) { m_expected = {count, text}; }

private:
    PrivateBus m_bus;
    GDBusConnection* m_connection = nullptr;
    size_t m_channels = 1;
    std::pair<size_t, std::string> m_expected;
};

/// A channel, and a middleware that has not announced itself. The log is empty.
class ChannelAndPeer : public ChannelTest {
protected:
    ChannelAndPeer() { ClearLog(); }

    RecordingChannel channel;
    ScriptedPeer peer{Address()};
};

/// The channel's lines for a change of one of the channel's names; handler is such as "Syn".
std::vector<LogLine> ChangeLog(const std::string& handler, const std::string& name,
                               const std::string& self, const std::string& from,
                               const std::string& to);
/// ... for both halves of owner's announcement.
std::vector<LogLine> AnnouncementLog(const std::string& handler, const std::string& name,
                                     const std::string& self, const std::string& owner);
/// ... for a new partner on PATH.
std::vector<LogLine> EstablishLog(const std::string& owner);
/// ... for an own announcement that succeeds.
std::vector<LogLine> BroadcastLog(const std::string& name, const std::string& self);
/// ... for construction with a bus, up to the announcement.
std::vector<LogLine> ConstructionLog(const std::string& self);

/// All of them, one after the other.
std::vector<LogLine> Join(const std::vector<std::vector<LogLine>>& parts);

}  // namespace applist::test
