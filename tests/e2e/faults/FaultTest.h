// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <sys/types.h>

#include "link/Connection.h"
#include "support/DrivenMiddleware.h"
#include "support/Television.h"

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

/// A count or duration from an environment variable; usual if the variable is not set.
size_t Setting(const char* variable, size_t usual);

/// A whole set for tests that cause a fault and check the state afterwards.
class FaultTest : public testing::Test {
protected:
    /// a "Alpha", b "Bravo" and c "Charlie".
    static const sim::Items THREE;

    /// changes are added to the environment of every program of the set.
    explicit FaultTest(const ChildProcess::Environment& changes = {});

    /// Starts the application; wrapper precedes it on the command line.
    void StartApplication(const std::vector<std::string>& wrapper = {});
    /// Starts the application and a middleware that fills its list, and waits until the list is
    /// visible and the first row selected.
    void ShowThree();
    ChildProcess& application() { return *m_application; }
    /// The application's log so far.
    std::string Log() const;

    std::unique_ptr<DrivenMiddleware> NewMiddleware();
    /// A gauge of the application that driver is connected to.
    Gauge GaugeOf(const DrivenMiddleware& driver);
    /// The application's footprint after it has slept for a second. The toolkit frees its last
    /// frame's memory half a second after the frame, and then the application returns spare memory.
    Footprint AtRest(const Gauge& gauge);

    /// Expects these items in the list and a row for each on the screen, in this order: Down visits
    /// them all and returns to the first. Leaves the first one selected.
    void ExpectList(DrivenMiddleware& driver, const sim::Items& items);
    /// Closes the list as a viewer does and expects an exit without errors.
    void ExpectCleanEnd();

    Television m_set;

private:
    void Step(DrivenMiddleware& driver, const sim::Item& next);

    std::string m_log;
    std::unique_ptr<ChildProcess> m_application;
};

}  // namespace applist::test
