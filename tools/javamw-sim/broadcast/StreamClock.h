// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// How much time a stream has taken, by the programme clock references (ISO/IEC 13818-1, 2.4.2.2)
/// of the first PID that carries any.
class StreamClock {
public:
    /// packet is a whole transport packet of any PID.
    void Push(ByteSpan packet);

    /// Since the first reference; nothing before it. A jump of the clock, as where recordings were
    /// joined, takes no time.
    std::optional<double> seconds() const;

private:
    std::optional<uint16_t> m_pid;
    uint64_t m_last = 0;
    uint64_t m_ticks = 0;
};

}  // namespace applist::sim
