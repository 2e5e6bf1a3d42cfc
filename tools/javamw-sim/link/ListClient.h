// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>

#include "common/Result.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Sends a message to an application and delivers the reply.
class MessageCaller {
public:
    /// The payload of the reply, or an error.
    using Done = std::function<void(const Result<Bytes>& reply)>;

    MessageCaller() = default;
    virtual ~MessageCaller() = default;
    MessageCaller(const MessageCaller&) = delete;
    MessageCaller& operator=(const MessageCaller&) = delete;
    MessageCaller(MessageCaller&&) = delete;
    MessageCaller& operator=(MessageCaller&&) = delete;

    /// Returns at once. Runs done later on the thread of the main loop. Calls to one application
    /// are answered in order.
    virtual void Call(const std::string& application, const Bytes& message, Done done) = 0;
};

/// Calls the functions of the list of an application with items instead of bytes.
class ListClient {
public:
    /// The items of the reply, or an error. Most functions reply without items.
    using Done = std::function<void(const Result<Items>& reply)>;

    /// caller must outlive the client.
    explicit ListClient(MessageCaller& caller) : m_caller(caller) {}

    /// Calls function of the application with items.
    ///
    /// The application sends the events that a call causes before the reply, so an event handler
    /// must not block until done runs.
    void Call(const std::string& application, Function function, const Items& items, Done done);

private:
    MessageCaller& m_caller;
};

}  // namespace applist::sim
