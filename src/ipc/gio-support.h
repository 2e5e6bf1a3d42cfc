// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "Log.h"

/// What the transport's files share in dealing with GIO. Any thread.
namespace applist {

/// The wire form of every payload: one byte array in a tuple, "(ay)". The result is floating.
GVariant* PayloadOf(const std::vector<char>& data);

/// The bytes of a "(ay)"; nothing for null or any other type. parameters stays the caller's.
std::optional<std::vector<char>> BytesOf(GVariant* parameters);

/// Who owned a bus name before and after a change; empty means nobody.
struct NameOwnerChange {
    std::string name;
    std::string oldOwner;
    std::string newOwner;
};

/// The content of a NameOwnerChanged signal; nothing for null or any type but "(sss)".
std::optional<NameOwnerChange> NameOwnerChangeOf(GVariant* parameters);

/// Logs what failed and error, as a line of place, frees error and sets it to null. Does nothing
/// for null.
void LogAndClear(const char* what, GError*& error, LogPlace place = LogPlace::Here());

}  // namespace applist
