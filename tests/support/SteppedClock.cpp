// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/SteppedClock.h"

#include <array>
#include <fstream>

namespace applist::test {
namespace {

// The library without its command of the same name, which does not start a program when a killed
// process with the same id has left a semaphore behind.
constexpr const char* FAKETIME = "/usr/$LIB/faketime/libfaketime.so.1";

std::vector<std::string> Preload(const std::string& libraries, const std::string& factor) {
    return {"env", "LD_PRELOAD=" + libraries, "FAKETIME=+0 x" + factor};
}

}  // namespace

std::vector<std::string> ClockAtSpeed(const std::string& factor) {
    return Preload(FAKETIME, factor);
}

SteppedClock::SteppedClock(Television& set)
    : m_file(set.WriteFile("step", std::string(2 * sizeof(int64_t), '\0'))) {}

// The first library sees the time that the second one returns, so the factor does not apply to the
// steps.
std::vector<std::string> SteppedClock::Wrapper(const std::string& factor) const {
    auto wrapper = Preload(std::string(CLOCK_STEP) + ":" + FAKETIME, factor);
    wrapper.push_back("APPLIST_CLOCK_STEP=" + m_file);
    return wrapper;
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
