// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>

#include "broadcast/ByteReader.h"
#include "broadcast/Damage.h"

namespace applist::sim {

/// Assembles the sections of one PID from its packets and checks their CRC.
class SectionAssembler {
public:
    /// Called with a whole section, from the table id to the CRC. The bytes are valid only during
    /// the call.
    using SectionHandler = std::function<void(ByteSpan section)>;

    /// damage must outlive the assembler, which adds the sections that it drops.
    SectionAssembler(SectionHandler handler, Damage& damage);
    ~SectionAssembler();
    SectionAssembler(const SectionAssembler&) = delete;
    SectionAssembler& operator=(const SectionAssembler&) = delete;
    SectionAssembler(SectionAssembler&&) = delete;
    SectionAssembler& operator=(SectionAssembler&&) = delete;

    /// packet must be a whole transport packet of the PID.
    void Push(ByteSpan packet);

private:
    struct Library;

    SectionHandler m_handler;
    Damage& m_damage;
    std::unique_ptr<Library> m_library;
};

}  // namespace applist::sim
