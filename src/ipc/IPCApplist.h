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

/// Takes the message id off the end of a frame, where the last four bytes are it, and leaves the
/// payload. Nothing, and an unchanged frame, when it is too short to hold an id.
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

/// A transport whose incoming frames go to member functions of a handler object.
///
/// Transport is the base, with the hooks of JavaMWDbusLocal. Handlers are not owned and must
/// unregister before they go. A frame that nobody can take is a log line and an empty reply, never
/// an error towards the transport. Main thread only; HandleConnectionReady() may come with the
/// transport's lock held.
template <typename Transport, typename Handler>
class IPCApplist : public Transport {
public:
    /// Gets the message id and the payload; returns the whole response.
    using MessageMethod = std::vector<char> (Handler::*)(int, const std::vector<char>&);
    /// Gets the message id and the payload.
    using NotificationMethod = void (Handler::*)(int, const std::vector<char>&);
    /// Gets the name of the partner that is now connected.
    using ConnectionReadyMethod = void (Handler::*)(const std::string&);

    /// name goes to the transport.
    explicit IPCApplist(const std::string& name) : Transport(name) { LOG_DEBUG("IPCApplist"); }
    ~IPCApplist() override = default;
    IPCApplist(const IPCApplist&) = delete;
    IPCApplist& operator=(const IPCApplist&) = delete;
    IPCApplist(IPCApplist&&) = delete;
    IPCApplist& operator=(IPCApplist&&) = delete;

    /// From now on method of object answers every call, in place of whoever did before.
    void RegisterOnMessage(Handler* object, MessageMethod method) {
        callbackMessageObject = object;
        callbackMessageMethod = method;
    }

    /// From now on method of object hears of every connected partner.
    void RegisterOnConnectionReady(Handler* object, ConnectionReadyMethod method) {
        connectionReadyCallbackObject = object;
        connectionReadyCallbackMethod = method;
    }

    /// Does nothing unless object is the one registered, so that nobody removes another.
    void UnregisterOnMessage(Handler* object) {
        if (callbackMessageObject != nullptr && callbackMessageObject == object) {
            callbackMessageObject = nullptr;
            LOG_INFO("Unregistered callbackMessageObject");
        }
    }

    /// Does nothing unless object is the one registered.
    void UnregisterOnConnectionReady(Handler* object) {
        if (connectionReadyCallbackObject != nullptr && connectionReadyCallbackObject == object) {
            connectionReadyCallbackObject = nullptr;
            LOG_INFO("Unregistered connectionReadyCallbackObject");
        }
    }

    /// Hands a call to the handler and returns its response; data shrinks to the payload.
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

    /// Hands a notification to the handler; data shrinks to the payload.
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

    /// Tells the handler of a new partner. It never hears of a lost one.
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
    // A null object means an empty slot; its method is then never looked at.
    Handler* callbackMessageObject = nullptr;
    MessageMethod callbackMessageMethod = nullptr;
    Handler* callbackNotificationObject = nullptr;  ///< Nobody asks for notifications so far.
    NotificationMethod callbackNotificationMethod = nullptr;
    Handler* connectionReadyCallbackObject = nullptr;
    ConnectionReadyMethod connectionReadyCallbackMethod = nullptr;
};
