// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gio/gio.h>

/// A bus without processes or time, for tests that choose what arrives and when. A program that
/// links HeldBus.cpp with the wrap options of its CMakeLists.txt uses this bus instead of the bus
/// library. Nothing arrives by itself: the test calls Announce() and Vanish().
namespace applist::test {

/// Stands in for the bus library. Records the transport's watches, proxies, subscriptions and
/// signals.
class HeldBus {
public:
    static constexpr const char* SELF = ":1.0";

    /// Refuses the next name that the application requests, as if it had another owner.
    void RefuseNextName() { m_refuse = true; }
    bool refusesNextName() const { return m_refuse; }

    /// Delivers both halves of an announcement: owner has owned the name and released it.
    void Announce(const std::string& name, const std::string& owner);
    /// Delivers to the watches of name that its owner has left the bus.
    void Vanish(const std::string& name);

    /// The watches, live proxies and subscriptions to signals for a unique name.
    size_t Watches(const std::string& name) const;
    size_t Proxies(const std::string& name) const;
    size_t Subscriptions(const std::string& sender) const;
    /// The addressees of the signals since the last call, oldest first.
    std::vector<std::string> TakeSignals();
    /// The names that were requested and not refused, oldest first.
    std::vector<std::string> TakeOwnedNames();

    // The functions of the bus library.
    guint Subscribe(const char* sender, const char* name, GDBusSignalCallback callback, void* data);
    void Unsubscribe(guint id) { m_subscriptions.erase(id); }
    guint Watch(const char* name, GBusNameVanishedCallback callback, void* data);
    void Unwatch(guint id) { m_watches.erase(id); }
    GVariant* Call(const std::string& method, GVariant* parameters);
    GDBusProxy* NewProxy(const char* name);
    void ProxyReleased(const std::string& name);
    void Emit(const char* destination) { m_signals.emplace_back(destination); }

private:
    struct Watcher {
        std::string name;
        GBusNameVanishedCallback callback;
        void* data;
    };
    struct Subscription {
        std::string sender;
        std::string name;
        GDBusSignalCallback callback;
        void* data;
    };
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
    bool m_refuse = false;
};

/// The one bus of the process; tests assign HeldBus{} to start afresh. Single thread only.
HeldBus& TheHeldBus();

}  // namespace applist::test
