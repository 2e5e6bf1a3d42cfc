// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "CallbackGuard.h"
#include "Log.h"
#include "ipc/javamw-dbus-local.h"

/// How a callback of the bus library reaches its channel.
///
/// The object registration and the three name subscriptions of a channel last as long as the
/// process' shared bus connection, and anyone else's reference may keep that alive longer than the
/// channel. So a callback's user data is looked up among the living before it is used.
/// Main thread only.
namespace applist {

/// A channel counts as living from here on.
void EnterLiving(const JavaMWDbusLocal* channel);
/// ... until here.
void LeaveLiving(const JavaMWDbusLocal* channel);
/// Returns true iff userData is a living channel.
bool IsLiving(const void* userData);

/// Runs body on the channel that user data names; logs and does nothing without a connection or a
/// living channel. The log line is one of place, the callback.
template <typename Body>
void WithChannel(const GDBusConnection* connection, void* userData, Body&& body,
                 LogPlace place = LogPlace::Here()) noexcept {
    if (connection == nullptr || !IsLiving(userData)) {
        LOG_ERROR_AT(place, "Empty user_data or connection not valid.\n\n");
        return;
    }
    GuardCallback([&] { std::forward<Body>(body)(*static_cast<JavaMWDbusLocal*>(userData)); });
}

}  // namespace applist
