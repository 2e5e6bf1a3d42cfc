// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/SectionAssembler.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include <dvbpsi/dvbpsi.h>
// The headers of the library must be included in this order.
#include <dvbpsi/psi.h>

#include "broadcast/PacketReader.h"

namespace applist::sim {
namespace {

// ISO/IEC 13818-1 limits a private section to 4096 bytes.
constexpr int SECTION_MAX_SIZE = 4096;
constexpr size_t LENGTH_FIELD_END = 3;
constexpr size_t HEADER_SIZE = 4;
constexpr uint8_t BEGINS_SECTION = 0x40;
constexpr uint8_t SCRAMBLED = 0xC0;
constexpr uint8_t HAS_ADAPTATION = 0x20;
constexpr uint8_t HAS_PAYLOAD = 0x10;

// The library does not check that lengths stay within the packet.
bool LengthsFit(ByteSpan packet) {
    if ((packet[3] & HAS_PAYLOAD) == 0) {
        return true;
    }
    size_t payload = HEADER_SIZE;
    if ((packet[3] & HAS_ADAPTATION) != 0) {
        payload += 1U + packet[HEADER_SIZE];
    }
    if (payload >= PACKET_SIZE) {
        return false;
    }
    // The first byte of such a payload is a pointer to the start of the section.
    return (packet[1] & BEGINS_SECTION) == 0 || payload + 1U + packet[payload] < PACKET_SIZE;
}

}  // namespace

// Uses the library's generic section decoder, which delivers sections of any table. The library has
// table decoders too, but none for application information tables.
struct SectionAssembler::Library {
    explicit Library(SectionAssembler& owner)
        : handle(dvbpsi_new(&Library::OnMessage, DVBPSI_MSG_ERROR)) {
        handle->p_sys = &owner;
        handle->p_decoder = static_cast<dvbpsi_decoder_t*>(dvbpsi_decoder_new(
            &Library::OnSection, SECTION_MAX_SIZE, true, sizeof(dvbpsi_decoder_t)));
    }
    ~Library() {
        dvbpsi_decoder_delete(handle->p_decoder);
        handle->p_decoder = nullptr;
        dvbpsi_delete(handle);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    Library(Library&&) = delete;
    Library& operator=(Library&&) = delete;

    static SectionAssembler& Owner(dvbpsi_t* handle) {
        return *static_cast<SectionAssembler*>(handle->p_sys);
    }
    static void OnSection(dvbpsi_t* handle, dvbpsi_psi_section_t* section) noexcept {
        Owner(handle).m_handler(ByteSpan(section->p_data, LENGTH_FIELD_END + section->i_length));
        // The callback owns the section, so the handler may use its bytes only during the call.
        dvbpsi_DeletePSISections(section);
    }
    // The library reports errors only as text.
    static void OnMessage(dvbpsi_t* handle, dvbpsi_msg_level_t /*level*/,
                          const char* text) noexcept {
        if (handle->p_sys != nullptr) {
            Damage& damage = Owner(handle).m_damage;
            const bool crc = std::strstr(text, "CRC") != nullptr;
            const bool gap = std::strstr(text, "discontinuity") != nullptr;
            ++(crc   ? damage.wrongChecksums
               : gap ? damage.missingPackets
                     : damage.malformedSections);
        }
    }

    dvbpsi_t* handle;
};

SectionAssembler::SectionAssembler(SectionHandler handler, Damage& damage)
    : m_handler(std::move(handler)),
      m_damage(damage),
      m_library(std::make_unique<Library>(*this)) {}

SectionAssembler::~SectionAssembler() = default;

void SectionAssembler::Push(ByteSpan packet) {
    if ((packet[3] & SCRAMBLED) != 0) {
        ++m_damage.scrambledPackets;
        return;
    }
    if (!LengthsFit(packet)) {
        ++m_damage.malformedPackets;
        return;
    }
    // The library takes a pointer to non-const bytes, and the stream is read-only.
    std::array<uint8_t, PACKET_SIZE> copy{};
    std::copy(packet.begin(), packet.end(), copy.begin());
    dvbpsi_packet_push(m_library->handle, copy.data());
}

}  // namespace applist::sim
