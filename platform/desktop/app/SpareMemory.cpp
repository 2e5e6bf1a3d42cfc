// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/SpareMemory.h"

#include <fstream>
#include <malloc.h>
#include <unistd.h>

#include <sys/resource.h>

namespace applist::desktop {
namespace {

// In pages. A list of some hundred rows stays below.
size_t Much() {
    return (4U << 20) / static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

// How many pages have come in so far. Cheaper to ask than how many there are.
long Faults() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

size_t Held() {
    std::ifstream file("/proc/self/statm");
    size_t mapped = 0;
    size_t held = 0;
    file >> mapped >> held;
    return held;
}

}  // namespace

SpareMemory::SpareMemory() {
    Note();
}

void SpareMemory::Note() {
    m_faults = Faults();
    m_held = Held();
}

void SpareMemory::GiveBack() {
    const long faults = Faults();
    if (faults - m_faults < static_cast<long>(Much())) {
        return;
    }
    m_faults = faults;
    if (Held() >= m_held + Much()) {
        malloc_trim(0);
        Note();
    }
}

}  // namespace applist::desktop
