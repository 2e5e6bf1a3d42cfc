// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/StartLedger.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace applist::test {
namespace {

constexpr const char* LAST_STEP = "draw the first frame";

bool IsLibrary(const std::string& path) {
    return path.find(".so") != std::string::npos;
}

// The lines of START_STEPS, with the sums since the start of the process.
std::vector<StartStep> ReadSums(const std::string& path) {
    std::vector<StartStep> sums;
    std::ifstream in(path);
    StartStep step;
    while (std::getline(in, step.name, '\t') &&
           in >> step.milliseconds >> step.processorMilliseconds >> step.readingFaults >>
               step.faults >> step.roundTrips >> step.libraries) {
        in.ignore();
        sums.push_back(step);
    }
    return sums;
}

StartStep Difference(const StartStep& sum, const StartStep& before) {
    return {sum.name,
            sum.milliseconds - before.milliseconds,
            sum.processorMilliseconds - before.processorMilliseconds,
            sum.readingFaults - before.readingFaults,
            sum.faults - before.faults,
            sum.roundTrips - before.roundTrips,
            sum.libraries - before.libraries,
            0};
}

// Paths of the libraries that a process has mapped.
std::set<std::string> MappedLibraries(pid_t process) {
    std::set<std::string> libraries;
    std::ifstream in("/proc/" + std::to_string(process) + "/maps");
    for (std::string line; std::getline(in, line);) {
        const size_t path = line.find('/');
        if (path != std::string::npos && IsLibrary(line.substr(path))) {
            libraries.insert(line.substr(path));
        }
    }
    return libraries;
}

// Assigns each successful open to its step: strace also shows the preloaded library opening the
// file of steps, at the end of each.
void CountFiles(const std::string& trace, const std::string& stepsFile, StartLedger& ledger) {
    std::ifstream in(trace);
    size_t step = 0;
    for (std::string line; step < ledger.steps.size() && std::getline(in, line);) {
        const size_t path = line.find('"') + 1;
        const std::string file = line.substr(path, line.find('"', path) - path);
        if (file == stepsFile) {
            ++step;
        } else if (line.find(" = -1 ") == std::string::npos && path != 0 && !IsLibrary(file)) {
            ++ledger.steps[step].files;
            ledger.files.insert(file);
        }
    }
}

}  // namespace

StartStep StartLedger::Total() const {
    StartStep total{"total"};
    for (const StartStep& step : steps) {
        total.milliseconds += step.milliseconds;
        total.processorMilliseconds += step.processorMilliseconds;
        total.readingFaults += step.readingFaults;
        total.faults += step.faults;
        total.roundTrips += step.roundTrips;
        total.libraries += step.libraries;
        total.files += step.files;
    }
    return total;
}

StartLedger RecordStart(Television& set, bool traced) {
    const std::string steps = set.WriteFile("steps", "");
    const std::string trace = set.WriteFile("trace", "");
    ChildProcess::Environment environment = set.Environment();
    environment["START_STEPS"] = steps;
    std::vector<std::string> command{BuiltProgram("applist")};
    if (traced) {
        command.insert(command.begin(),
                       {"strace", "-D", "-f", "-qq", "-s", "4096", "-e", "trace=open,openat", "-o",
                        trace, "-E", "LD_PRELOAD=" START_STEPS});
    } else {
        environment["LD_PRELOAD"] = START_STEPS;
    }
    StartLedger ledger;
    ChildProcess application(command, environment);
    const bool drawn = set.screen().WaitUntil([&] {
        const std::vector<StartStep> sums = ReadSums(steps);
        return !sums.empty() && sums.back().name == LAST_STEP;
    });
    if (drawn) {
        StartStep before;
        for (const StartStep& sum : ReadSums(steps)) {
            ledger.steps.push_back(Difference(sum, before));
            before = sum;
        }
        ledger.libraries = MappedLibraries(application.pid());
        CountFiles(trace, steps, ledger);
    }
    application.Signal(SIGTERM);
    application.WaitForExit();
    return ledger;
}

}  // namespace applist::test
