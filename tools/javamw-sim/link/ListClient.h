// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "common/Result.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Carries one message to an application and its reply back.
class MessageCaller {
public:
    /// The reply's payload, or why there is none.
    using Done = std::function<void(const Result<Bytes>& reply)>;

    MessageCaller() = default;
    virtual ~MessageCaller() = default;
    MessageCaller(const MessageCaller&) = delete;
    MessageCaller& operator=(const MessageCaller&) = delete;
    MessageCaller(MessageCaller&&) = delete;
    MessageCaller& operator=(MessageCaller&&) = delete;

    /// Returns at once; done runs later, on the thread of the main loop. Calls to one application
    /// are answered in their order.
    virtual void Call(const std::string& application, const Bytes& message, Done done) = 0;
};

/// The application's list as the middleware drives it: functions and items instead of bytes.
class ListClient {
public:
    /// The items of the reply, or why there are none. Most functions reply with no items.
    using Done = std::function<void(const Result<Items>& reply)>;

    /// caller must outlive the client.
    explicit ListClient(MessageCaller& caller) : m_caller(caller) {}

    /// Calls function of the application with the items that it takes.
    ///
    /// The application sends the events that a call causes before the reply to it, so whoever calls
    /// from within an event must not wait for done there.
    void Call(const std::string& application, Function function, const Items& items, Done done);

private:
    MessageCaller& m_caller;
};

}  // namespace applist::sim
