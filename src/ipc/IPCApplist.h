// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "LittleEndian.h"
#include "Log.h"

namespace applist {

/// Removes the message id, the last four bytes, from frame and returns it; frame then holds the
/// payload. Returns nothing and leaves frame unchanged if it is too short.
inline std::optional<int> TakeMessageId(std::vector<char>& frame) {
    if (frame.size() < WIRE_NUMBER_SIZE) {
        return std::nullopt;
    }
    const auto bytes = std::span<const char>(frame).last<WIRE_NUMBER_SIZE>();
    const int messageId = static_cast<int>(FromLittleEndian(bytes));
    frame.resize(frame.size() - WIRE_NUMBER_SIZE);
    return messageId;
}

}  // namespace applist

/// Dispatches the transport's incoming frames to member functions of a handler object.
///
/// Transport is the base class, with the hooks of JavaMWDbusLocal. Handlers are not owned and must
/// unregister before they are destroyed. A frame without an id or without a registered handler is
/// logged and answered with an empty reply. Main thread only; HandleConnectionReady() may be called
/// while the transport's lock is held.
template <typename Transport, typename Handler>
class IPCApplist : public Transport {
public:
    /// Receives the message id and the payload; returns the whole response.
    using MessageMethod = std::vector<char> (Handler::*)(int, const std::vector<char>&);
    /// Receives the message id and the payload.
    using NotificationMethod = void (Handler::*)(int, const std::vector<char>&);
    /// Receives the name of the partner that has connected.
    using ConnectionReadyMethod = void (Handler::*)(const std::string&);

    /// name is passed to the transport.
    explicit IPCApplist(const std::string& name) : Transport(name) { LOG_DEBUG("IPCApplist"); }
    ~IPCApplist() override = default;
    IPCApplist(const IPCApplist&) = delete;
    IPCApplist& operator=(const IPCApplist&) = delete;
    IPCApplist(IPCApplist&&) = delete;
    IPCApplist& operator=(IPCApplist&&) = delete;

    /// Sets the handler of calls: method of object. Replaces the previous handler.
    void RegisterOnMessage(Handler* object, MessageMethod method) {
        callbackMessageObject = object;
        callbackMessageMethod = method;
    }

    /// Sets the handler of new connections: method of object. Replaces the previous handler.
    void RegisterOnConnectionReady(Handler* object, ConnectionReadyMethod method) {
        connectionReadyCallbackObject = object;
        connectionReadyCallbackMethod = method;
    }

    /// Removes the handler of calls. Does nothing if another object is registered.
    void UnregisterOnMessage(Handler* object) {
        if (callbackMessageObject != nullptr && callbackMessageObject == object) {
            callbackMessageObject = nullptr;
            LOG_INFO("Unregistered callbackMessageObject");
        }
    }

    /// Removes the handler of new connections. Does nothing if another object is registered.
    void UnregisterOnConnectionReady(Handler* object) {
        if (connectionReadyCallbackObject != nullptr && connectionReadyCallbackObject == object) {
            connectionReadyCallbackObject = nullptr;
            LOG_INFO("Unregistered connectionReadyCallbackObject");
        }
    }

    /// Passes a call to the handler and returns its response; data is reduced to the payload.
    std::vector<char> HandleMessage(std::vector<char>& data) override {
        LOG_DEBUG("IPC HandleMessage");
        const std::optional<int> messageId = applist::TakeMessageId(data);
        if (!messageId) {
            LOG_ERROR("Data corrupted. Does not contain message id.");
            return {};
        }
        if (callbackMessageObject == nullptr) {
            LOG_INFO("callbackMessageObject object is NULL");
            return {};
        }
        return (callbackMessageObject->*callbackMessageMethod)(*messageId, data);
    }

    /// Passes a notification to the handler; data is reduced to the payload.
    void HandleNotification(std::vector<char>& data) override {
        LOG_DEBUG("IPC HandleNotification");
        const std::optional<int> messageId = applist::TakeMessageId(data);
        if (!messageId) {
            LOG_ERROR("Data corrupted. Does not contain message id.");
            return;
        }
        if (callbackNotificationObject == nullptr) {
            LOG_INFO("callbackNotificationObject object is NULL");
            return;
        }
        (callbackNotificationObject->*callbackNotificationMethod)(*messageId, data);
    }

    /// Reports a new partner to the handler. Lost partners are not reported.
    void HandleConnectionReady(bool state, const std::string& partner) override {
        LOG_DEBUG("HandleConnectionReady state=%d, partner=%s", static_cast<int>(state),
                  partner.c_str());
        if (!state || connectionReadyCallbackObject == nullptr) {
            return;
        }
        LOG_DEBUG("Calling connection ready callback");
        (connectionReadyCallbackObject->*connectionReadyCallbackMethod)(partner);
    }

private:
    // If the object is null, no handler is registered and the method is not used.
    Handler* callbackMessageObject = nullptr;
    MessageMethod callbackMessageMethod = nullptr;
    Handler* callbackNotificationObject = nullptr;  ///< Currently never registered.
    NotificationMethod callbackNotificationMethod = nullptr;
    Handler* connectionReadyCallbackObject = nullptr;
    ConnectionReadyMethod connectionReadyCallbackMethod = nullptr;
};
