// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include <gio/gio.h>

/// The transport's calls of the bus library as a history. A program that links BusCalls.cpp with
/// the wrap options of tests/bus/CMakeLists.txt sends these calls through the recorder, which
/// passes them on to the bus library.
namespace applist::test {

/// The recorded calls, and the faults that a test sets.
struct BusCalls {
    /// Only calls on this connection are recorded and altered.
    GDBusConnection* connection = nullptr;
    /// Every recorded call, oldest first, with its arguments; "any" for a null string.
    std::vector<std::string> calls;

    /// The codes that these methods of the bus daemon answer with; the daemon is not called then.
    std::map<std::string, uint32_t> answers;
    /// Watching a name fails; the id is 0.
    bool watchFails = false;
    /// Creating a proxy fails with the message "no proxy today".
    bool proxyFails = false;
};

/// The one recorder of the process; tests assign BusCalls{} to start afresh. Single thread only.
BusCalls& TheBusCalls();

}  // namespace applist::test
