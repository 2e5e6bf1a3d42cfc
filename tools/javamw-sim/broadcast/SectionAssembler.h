// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Puts the sections of one PID together from its packets and checks their CRC.
class SectionAssembler {
public:
    /// Called with a whole section, from the table id to the CRC, valid during the call only.
    using SectionHandler = std::function<void(ByteSpan section)>;

    explicit SectionAssembler(SectionHandler handler);
    ~SectionAssembler();
    SectionAssembler(const SectionAssembler&) = delete;
    SectionAssembler& operator=(const SectionAssembler&) = delete;
    SectionAssembler(SectionAssembler&&) = delete;
    SectionAssembler& operator=(SectionAssembler&&) = delete;

    /// packet is a whole transport packet of the PID.
    void Push(ByteSpan packet);

    /// Sections given up so far: wrong CRC, impossible length, a gap in the packet count.
    size_t damaged() const { return m_damaged; }

private:
    struct Library;

    SectionHandler m_handler;
    size_t m_damaged = 0;
    std::unique_ptr<Library> m_library;
};

}  // namespace applist::sim
