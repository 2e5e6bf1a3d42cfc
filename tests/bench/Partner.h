// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace applist::bench {

/// A middleware's end of the channel with as little in it as can be, so that a measure is of the
/// other end. On a connection of its own; main thread only. What goes wrong ends the program.
class Partner {
public:
    explicit Partner(const std::string& address);
    ~Partner();
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;
    Partner(Partner&&) = delete;
    Partner& operator=(Partner&&) = delete;

    /// Makes the handshake with every list on the bus. It is complete for whoever answers a call
    /// after it: the bus keeps the order.
    void Announce();
    /// Waits for a list to announce itself; its unique bus name. A call that came before would find
    /// a connection in the making, and no answer.
    std::string AwaitList();
    /// Calls "Send" and waits for the answer.
    std::vector<char> Send(const std::string& destination, const std::vector<char>& bytes);
    /// Calls "Send" and lets the answer come when it may.
    void SendWithoutWaiting(const std::string& destination, const std::vector<char>& bytes);
    /// Waits for so many signals since the last call of this function.
    void AwaitSignals(size_t count);
    /// How many signals came since AwaitSignals().
    size_t signals() const { return m_signals; }

private:
    void CallDaemon(const char* method, GVariant* parameters);
    void Own(const std::string& ending);
    static void cb_Announced(GDBusConnection* connection, const char* sender, const char* path,
                             const char* interface, const char* member, GVariant* parameters,
                             void* partner);
    static void cb_Signal(GDBusConnection* connection, const char* sender, const char* path,
                          const char* interface, const char* member, GVariant* parameters,
                          void* partner);

    GDBusConnection* m_connection = nullptr;
    unsigned m_subscriptions[2] = {};
    std::string m_list;
    size_t m_signals = 0;
};

/// A call of the list: what it carries and the number of the function behind it.
std::vector<char> Frame(std::vector<char> content, int function);

constexpr int GET_SELECTION = 2001;
constexpr int REMOVE_ALL_ITEMS = 2003;
constexpr int ADD_ITEMS = 2004;

}  // namespace applist::bench
