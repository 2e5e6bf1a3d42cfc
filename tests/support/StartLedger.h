// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <vector>

#include "support/Television.h"

namespace applist::test {

/// What one step of the application's start has used, or all steps together.
struct StartStep {
    std::string name;
    double milliseconds = 0;
    double processorMilliseconds = 0;
    long readingFaults = 0;  ///< Page faults that read from disk.
    long faults = 0;         ///< The other page faults.
    long roundTrips = 0;     ///< Times that the program waited for a reply of the X server.
    long libraries = 0;
    long files = 0;  ///< Opened files and folders that are not libraries; 0 unless traced.
};

/// The start of the application, from its process to the first frame with rows.
struct StartLedger {
    std::vector<StartStep> steps;
    /// Paths of the loaded libraries, and if traced of the other opened files.
    std::set<std::string> libraries;
    std::set<std::string> files;

    StartStep Total() const;
};

/// Starts the application on the set, whose middleware must be running, waits for the first frame
/// with rows, and ends it. If traced, strace records the opened files; the times and the first
/// step's page faults then include those of strace. Returns a ledger without steps if no frame is
/// drawn in time.
StartLedger RecordStart(Television& set, bool traced);

}  // namespace applist::test
