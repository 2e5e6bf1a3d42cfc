// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gio/gio.h>

namespace applist::bench {

/// A minimal middleware, so that a benchmark measures the other side of the channel. Uses a
/// separate connection; main thread only. An error ends the program.
class Partner {
public:
    explicit Partner(const std::string& address);
    ~Partner();
    Partner(const Partner&) = delete;
    Partner& operator=(const Partner&) = delete;
    Partner(Partner&&) = delete;
    Partner& operator=(Partner&&) = delete;

    /// Completes the handshake with every list on the bus. The bus keeps the order, so it is
    /// complete for a list that answers a later call.
    void Announce();
    /// Waits until a list announces itself and returns its unique bus name. A call sent earlier
    /// would not be answered.
    std::string AwaitList();
    /// Calls "Send" and waits for the answer.
    std::vector<char> Send(const std::string& destination, const std::vector<char>& bytes);
    /// Calls "Send" without waiting for the answer.
    void SendWithoutWaiting(const std::string& destination, const std::vector<char>& bytes);
    /// Waits for this many signals since the last call of this function.
    void AwaitSignals(size_t count);
    /// The number of signals since AwaitSignals().
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

/// A frame that calls the list: the payload, then the function's number.
std::vector<char> Frame(std::vector<char> content, int function);

constexpr int GET_SELECTION = 2001;
constexpr int REMOVE_ALL_ITEMS = 2003;
constexpr int ADD_ITEMS = 2004;

}  // namespace applist::bench
