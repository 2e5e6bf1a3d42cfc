// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <optional>
#include <ostream>
#include <string>

#include <sys/types.h>

#include "link/Connection.h"

namespace applist::test {

/// The resources of a program at one moment.
struct Footprint {
    /// Private resident memory. Excludes file-backed pages, because other processes affect them.
    size_t residentKiB = 0;
    size_t descriptors = 0;
    /// Match rules that the bus daemon keeps for its connection.
    size_t matchRules = 0;
};
std::ostream& operator<<(std::ostream& out, const Footprint& footprint);

// The address sanitizer keeps freed memory for a while and adds records to allocated memory.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define APPLIST_TEST_MEMORY_FACTOR 8
#endif
#endif
#ifndef APPLIST_TEST_MEMORY_FACTOR
#define APPLIST_TEST_MEMORY_FACTOR 1
#endif
/// How many times the memory growth of a release build this build may show.
inline constexpr size_t MEMORY_FACTOR = APPLIST_TEST_MEMORY_FACTOR;

/// Reads a program's resources from the kernel and the bus daemon, without asking the program.
class Gauge {
public:
    /// The program with this process id that has this unique name on the bus at address.
    Gauge(pid_t program, const std::string& address, std::string uniqueName);

    /// Returns all zero, and fails the test, if the program or the bus is gone.
    Footprint Read() const;
    /// The number of times that the program's main thread has gone to sleep, or nothing if it is
    /// running. Compare footprints only if this number did not change in between, because the
    /// pixels of one frame take two megabytes.
    std::optional<size_t> Sleeps() const;

private:
    /// The first word of a field in /proc/PID/status. Returns an empty text, and fails the test, if
    /// the program is gone.
    std::string Status(const std::string& field) const;
    size_t MatchRules() const;

    std::string m_proc;
    std::string m_uniqueName;
    sim::ConnectionPtr m_connection;
};

}  // namespace applist::test
