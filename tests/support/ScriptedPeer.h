// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <ostream>
#include <span>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace applist::test {

/// One message that reached a ScriptedPeer.
struct PeerEvent {
    enum Kind {
        ANNOUNCEMENT,  ///< text: the announced name without the channel's base name
        SIGNAL,        ///< text: the signal's member and object path
        REPLY,         ///< text: empty
        FAILURE        ///< text: the D-Bus error name of a call
    };
    Kind kind = ANNOUNCEMENT;
    std::string text;
    /// The sender's unique name; empty for replies and failures.
    std::string sender;
    std::vector<char> bytes;

    bool operator==(const PeerEvent& other) const = default;
};
std::ostream& operator<<(std::ostream& out, const PeerEvent& event);

/// One side of a channel, usually the middleware's, on a separate connection; the test controls
/// each step. It receives all announcements of the other side, and every signal of the channel's
/// interface that the bus delivers, while the default main context runs. Main thread only.
class ScriptedPeer {
public:
    enum Role { MIDDLEWARE, APPLICATION };

    /// Connects to the bus at address. A failure ends the process, because the tests cannot
    /// continue.
    explicit ScriptedPeer(const std::string& address, const std::string& channel = "Applist",
                          Role role = MIDDLEWARE);
    ~ScriptedPeer();
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    const std::string& UniqueName() const { return m_uniqueName; }
    GDBusConnection* Connection() const { return m_connection; }

    /// Own, release, or own and at once release the channel's name with this ending, such as
    /// "_CLIENT_SYN". The bus has done so on return.
    void Own(const std::string& ending);
    void Release(const std::string& ending);
    void Announce(const std::string& ending);

    /// Calls "Send" on an object of destination. The reply becomes an event when it arrives.
    void Send(const std::string& destination, const std::string& path,
              const std::vector<char>& bytes);
    /// Sends to the channel "Applist" of destination and runs the main context until the reply
    /// arrives; returns its bytes.
    std::vector<char> Ask(const std::string& destination, const std::vector<char>& bytes);
    /// Like Send() for any method and arguments.
    void Call(const std::string& destination, const std::string& path, const std::string& interface,
              const std::string& member, GVariant* arguments);

    /// Sends a signal of the channel's interface to destination alone. Takes floating content.
    void Emit(const std::string& destination, const std::string& path, const std::string& member,
              GVariant* content);
    /// The usual one: "SendSignal" with bytes.
    void Notify(const std::string& destination, const std::string& path,
                const std::vector<char>& bytes);

    /// Leaves the bus, which fails the calls that are pending. The destructor does so, too.
    void Leave();

    /// All that arrived, oldest first. The second function omits announcements.
    const std::vector<PeerEvent>& Events() const { return m_events; }
    std::vector<PeerEvent> Traffic() const;
    /// All announcements and signals that arrived, as texts: "_CLIENT_SYN", "signal BYTES".
    std::vector<std::string> Heard() const;
    /// The sender of the last announcement.
    const std::string& Announcer() const { return m_announcer; }
    /// Discards the events.
    void Forget();

    /// Runs the main context until the channel has announced that ending since the last call.
    [[nodiscard]] bool AwaitAnnouncement(const std::string& ending);
    /// Runs the main context until count messages other than announcements have arrived in all.
    [[nodiscard]] bool AwaitTraffic(size_t count);
    /// Runs the main context until Heard() has count entries.
    [[nodiscard]] bool AwaitHeard(size_t count);

private:
    void CallDaemon(const char* method, GVariant* parameters);
    void ListenTo(const std::string& name);
    static void OnNameOwnerChanged(GDBusConnection*, const char*, const char*, const char*,
                                   const char*, GVariant* parameters, void* peer);
    static void OnSignal(GDBusConnection*, const char* sender, const char* path, const char*,
                         const char* member, GVariant* parameters, void* peer);
    static void OnReply(GObject* connection, GAsyncResult* result, void* peer);

    std::string m_base;
    std::string m_uniqueName;
    std::string m_announcer;
    GDBusConnection* m_connection = nullptr;
    std::vector<unsigned> m_subscriptions;
    std::vector<PeerEvent> m_events;
    int m_pending = 0;     ///< Calls without an answer yet.
    size_t m_awaited = 0;  ///< Events that AwaitAnnouncement() has passed.
};

/// Returns bytes as the content of a message of the channel, "(ay)", with a floating reference.
inline GVariant* Payload(std::span<const char> bytes) {
    return g_variant_new("(@ay)", g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(),
                                                            bytes.size(), sizeof(char)));
}

/// Formats bytes as the tests write them.
inline std::vector<char> BytesFrom(const std::string& text) {
    return {text.begin(), text.end()};
}

}  // namespace applist::test
