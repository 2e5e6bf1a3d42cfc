// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/SteppedClock.h"

#include <array>
#include <fstream>

namespace applist::test {

SteppedClock::SteppedClock(Television& set)
    : m_file(set.WriteFile("step", std::string(2 * sizeof(int64_t), '\0'))) {}

// The preloaded library precedes faketime's, so the factor does not apply to the steps.
std::vector<std::string> SteppedClock::Wrapper(const std::string& factor) const {
    return {"env",
            std::string("LD_PRELOAD=") + CLOCK_STEP,
            "APPLIST_CLOCK_STEP=" + m_file,
            "faketime",
            "-f",
            "+0 x" + factor};
}

void SteppedClock::SetWall(int64_t seconds) {
    m_wall = seconds;
    Write();
}

void SteppedClock::Pass(int64_t seconds) {
    m_passed += seconds;
    Write();
}

// The application has mapped the file, so it is changed in place.
void SteppedClock::Write() const {
    const std::array<int64_t, 2> steps{m_wall, m_passed};
    std::fstream(m_file, std::ios::binary | std::ios::in | std::ios::out)
        .write(reinterpret_cast<const char*>(steps.data()), sizeof steps);
}

}  // namespace applist::test
