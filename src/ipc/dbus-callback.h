// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>

#include "CallbackGuard.h"
#include "Log.h"
#include "ipc/javamw-dbus-local.h"

/// Safe access to a channel from callbacks of the bus library.
///
/// The object registration and the three name subscriptions last as long as the process' shared bus
/// connection. Other references may keep the connection alive after the channel is destroyed.
/// Therefore a callback checks its user data against the set of live channels before it uses it.
/// Main thread only.
namespace applist {

/// Adds a channel to the set of live channels.
void AddLiveChannel(const JavaMWDbusLocal* channel);
/// Removes a channel from the set.
void RemoveLiveChannel(const JavaMWDbusLocal* channel);
/// Returns true if userData is a live channel.
bool IsLiveChannel(const void* userData);

/// Runs body with the channel that user_data points to. If the connection is null or the channel is
/// no longer alive, logs an error with the position place (the callback's) instead.
template <typename Body>
void WithChannel(const GDBusConnection* connection, void* userData, Body&& body,
                 LogPlace place = LogPlace::Here()) noexcept {
    if (connection == nullptr || !IsLiveChannel(userData)) {
        LOG_ERROR_AT(place, "Empty user_data or connection not valid.\n\n");
        return;
    }
    GuardCallback([&] { std::forward<Body>(body)(*static_cast<JavaMWDbusLocal*>(userData)); });
}

}  // namespace applist
