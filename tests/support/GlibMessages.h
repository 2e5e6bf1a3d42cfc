// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// GLib's warnings and worse of this process, kept instead of printed. Recording starts with the
/// first call and lasts as long as the process. Any thread.
namespace applist::test {

/// Starts recording, or starts it afresh.
void RecordGlibMessages();

/// What was recorded so far, oldest first, such as "GLib-GIO: Invalid id 7 passed to ...".
std::vector<std::string> GlibMessages();

}  // namespace applist::test
