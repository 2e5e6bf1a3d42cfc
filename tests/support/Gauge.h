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

/// What a program holds at one moment.
struct Footprint {
    /// Resident memory of its own. Pages of program files come and go with what others need.
    size_t residentKiB = 0;
    size_t descriptors = 0;
    /// What the bus daemon keeps for its connection.
    size_t matchRules = 0;
};
std::ostream& operator<<(std::ostream& out, const Footprint& footprint);

// The address sanitizer keeps what was freed for a while, and records beside what is in use.
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define APPLIST_TEST_MEMORY_FACTOR 8
#endif
#endif
#ifndef APPLIST_TEST_MEMORY_FACTOR
#define APPLIST_TEST_MEMORY_FACTOR 1
#endif
/// By how much more than as shipped a program under test may grow in this build.
inline constexpr size_t MEMORY_FACTOR = APPLIST_TEST_MEMORY_FACTOR;

/// Reads what a program holds: from the kernel and from the bus daemon, not from the program.
class Gauge {
public:
    /// The program with this process id that has this unique name on the bus at address.
    Gauge(pid_t program, const std::string& address, std::string uniqueName);

    /// All zero, and a failure of the test, when the program or the bus is gone.
    Footprint Read() const;
    /// How often the program's main thread has gone to sleep, if it sleeps now. What it holds may
    /// be compared only while that stays the same: the pixels of a frame alone are two megabytes.
    std::optional<size_t> Sleeps() const;

private:
    /// The word behind the field's name in what the kernel tells of the program; empty, and a
    /// failure of the test, when it is gone.
    std::string Status(const std::string& field) const;
    size_t MatchRules() const;

    std::string m_proc;
    std::string m_uniqueName;
    sim::ConnectionPtr m_connection;
};

}  // namespace applist::test
