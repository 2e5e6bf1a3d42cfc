// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <gio/gio.h>

/// A bus without processes or time, for tests that choose what arrives and when. A program that
/// links fake_bus uses this bus instead of the bus library. Nothing arrives by itself: the test
/// calls Announce(), Vanish(), Call() and Signal().
namespace applist::test {

/// Stands in for the bus library. Records the transport's watches, proxies, subscriptions and
/// signals.
class HeldBus {
public:
    static constexpr const char* SELF = ":1.0";

    /// True if every call of the bus library is to be recorded.
    bool records = false;
    /// The recorded calls with their arguments, oldest first; "any" for a null string.
    std::vector<std::string> calls;
    /// The codes that these methods of the bus daemon answer with.
    std::map<std::string, uint32_t> answers;
    /// Memory runs out in this method of the bus daemon.
    std::string outOfMemoryIn;
    /// Watching a name fails; the id is 0.
    bool watchFails = false;
    /// Creating a proxy fails with the message "no proxy today".
    bool proxyFails = false;

    /// Returns bytes as the parameters of a call or a signal; the reference is floating.
    static GVariant* Payload(std::string_view bytes);

    /// Refuses the next name that the application requests, as if it had another owner.
    void RefuseNextName() { m_nextName = NextName::REFUSED; }
    /// Loses the reply to the application's next request for a name.
    void LoseNextReply() { m_nextName = NextName::REPLY_LOST; }
    /// True if the next name will not be announced.
    bool refusesNextName() const { return m_nextName != NextName::GRANTED; }

    /// Delivers both halves of an announcement: owner has owned the name and released it.
    void Announce(const std::string& name, const std::string& owner);
    /// Delivers to the watches of name that its owner has left the bus.
    void Vanish(const std::string& name);
    /// Calls the application's object with these bytes. Returns the reply; nothing if the
    /// application does not reply.
    std::optional<std::string> Call(const std::string& sender, std::string_view bytes);
    /// Delivers a signal of a partner. Consumes a floating reference to parameters.
    void Signal(const std::string& sender, GVariant* parameters);

    /// The watches, live proxies and subscriptions to signals for a unique name.
    size_t Watches(const std::string& name) const;
    size_t Proxies(const std::string& name) const;
    size_t Subscriptions(const std::string& sender) const;
    /// The signals since the last call, oldest first: the addressee and the bytes, ":1.1 04000000".
    std::vector<std::string> TakeSignals();
    /// The names that were requested and granted, oldest first.
    std::vector<std::string> TakeOwnedNames();

    // The functions of the bus library.
    template <typename... Parts>
    void Record(const Parts&... parts) {
        if (records) {
            std::ostringstream call;
            (Put(call, parts), ...);
            calls.push_back(call.str());
        }
    }
    /// Records the end of a watch or subscription.
    void RecordEnd(const char* verb, guint id);
    guint Subscribe(const char* sender, const char* name, const std::string& subject,
                    GDBusSignalCallback callback, void* data);
    void Unsubscribe(guint id) { m_subscriptions.erase(id); }
    guint Watch(const char* name, GBusNameVanishedCallback callback, void* data);
    void Unwatch(guint id) { m_watches.erase(id); }
    guint Register(const char* path, const GDBusInterfaceVTable* table, void* data);
    GVariant* CallDaemon(const std::string& method, GVariant* parameters, GError** error);
    GDBusProxy* NewProxy(const char* name, GError** error);
    void ProxyReleased(const std::string& name);
    void Emit(const char* destination, GVariant* parameters);
    void Reply(GVariant* parameters);

private:
    enum class NextName { GRANTED, REFUSED, REPLY_LOST };
    struct Watcher {
        std::string name;
        GBusNameVanishedCallback callback;
        void* data;
    };
    struct Subscription {
        std::string sender;
        std::string name;
        std::string subject;
        GDBusSignalCallback callback;
        void* data;
    };
    struct Object {
        std::string path;
        const GDBusInterfaceVTable* table = nullptr;
        void* data = nullptr;
    };
    static void Put(std::ostream& call, const char* part) {
        call << (part != nullptr ? part : "any");
    }
    template <typename Part>
    static void Put(std::ostream& call, const Part& part) {
        call << part;
    }
    void DeliverChange(const std::string& name, const char* from, const char* to);

    // Ids are not reused, as in the bus library. The two ranges differ, so that an id of one kind
    // is not valid for the other.
    guint m_lastWatch = 1000000;
    guint m_lastSubscription = 0;
    std::map<guint, Watcher> m_watches;
    std::map<guint, Subscription> m_subscriptions;
    std::multiset<std::string> m_proxies;
    std::vector<std::string> m_signals;
    std::vector<std::string> m_ownedNames;
    NextName m_nextName = NextName::GRANTED;
    Object m_object;
    std::optional<std::string> m_reply;
};

/// The one bus of the process; tests assign HeldBus{} to start afresh. Single thread only.
HeldBus& TheHeldBus();

}  // namespace applist::test
