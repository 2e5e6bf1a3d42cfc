// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "Log.h"

/// GIO helpers of the transport. Any thread.
namespace applist {

/// Returns the wire form of a payload: a byte array in a tuple, "(ay)". The result is floating.
GVariant* PayloadOf(const std::vector<char>& data);

/// Returns the bytes of a "(ay)", or nothing if parameters is null or of another type. The caller
/// keeps ownership of parameters.
std::optional<std::vector<char>> BytesOf(GVariant* parameters);

/// The owners of a bus name before and after a change; an empty string means no owner.
struct NameOwnerChange {
    std::string name;
    std::string oldOwner;
    std::string newOwner;
};

/// Returns the content of a NameOwnerChanged signal, or nothing if parameters is null or not of
/// type "(sss)".
std::optional<NameOwnerChange> NameOwnerChangeOf(GVariant* parameters);

/// Logs what and error with the position place, frees error and sets it to null. Does nothing if
/// error is null.
void LogAndClear(const char* what, GError*& error, LogPlace place = LogPlace::Here());

}  // namespace applist
