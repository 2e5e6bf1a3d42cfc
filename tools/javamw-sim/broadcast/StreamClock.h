// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Measures the duration of a stream by the programme clock references (ISO/IEC 13818-1, 2.4.2.2)
/// of the first PID that has any.
class StreamClock {
public:
    /// packet must be a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// Returns the seconds since the first reference, or nothing before it. A jump of the clock,
    /// for example where recordings were joined, counts as no time.
    std::optional<double> seconds() const;

private:
    std::optional<uint16_t> m_pid;
    uint64_t m_last = 0;
    uint64_t m_ticks = 0;
};

}  // namespace applist::sim
