// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Records this process' GLib warnings, critical messages and errors instead of printing them.
/// Recording starts with the first call and does not end. Any thread.
namespace applist::test {

/// Starts recording, or discards the messages recorded so far.
void RecordGlibMessages();

/// The recorded messages, oldest first, such as "GLib-GIO: Invalid id 7 passed to ...".
std::vector<std::string> GlibMessages();

}  // namespace applist::test
