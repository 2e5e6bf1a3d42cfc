// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/Television.h"

namespace applist::test {

/// What precedes an application on the command line so that its clocks run faster by factor. The
/// process that runs the command becomes the application.
std::vector<std::string> ClockAtSpeed(const std::string& factor);

/// The clocks of an application, which a test moves while it runs.
class SteppedClock {
public:
    /// The steps are kept in a file of the set.
    explicit SteppedClock(Television& set);

    /// ClockAtSpeed() for an application whose clocks this object moves.
    std::vector<std::string> Wrapper(const std::string& factor) const;
    /// Sets the application's wall clock off by this many seconds at once. Its timers do not see
    /// that.
    void SetWall(int64_t seconds);
    /// Lets the seconds pass for its timers. An application that sleeps sees that when it wakes.
    void Pass(int64_t seconds);

private:
    void Write() const;

    std::string m_file;
    int64_t m_wall = 0;
    int64_t m_passed = 0;
};

}  // namespace applist::test
