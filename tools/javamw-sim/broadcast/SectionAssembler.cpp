// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/SectionAssembler.h"

#include <algorithm>
#include <array>
#include <utility>

#include <dvbpsi/dvbpsi.h>
// The library's headers need this order.
#include <dvbpsi/psi.h>

#include "broadcast/PacketReader.h"

namespace applist::sim {
namespace {

constexpr int SECTION_MAX_SIZE = 4096;
constexpr size_t LENGTH_FIELD_END = 3;

}  // namespace

// The library's own table decoders know MPEG tables only; its decoder interface hands out any
// section as it is.
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
        dvbpsi_DeletePSISections(section);
    }
    static void OnMessage(dvbpsi_t* handle, dvbpsi_msg_level_t /*level*/,
                          const char* /*text*/) noexcept {
        if (handle->p_sys != nullptr) {
            ++Owner(handle).m_damaged;
        }
    }

    dvbpsi_t* handle;
};

SectionAssembler::SectionAssembler(SectionHandler handler)
    : m_handler(std::move(handler)), m_library(std::make_unique<Library>(*this)) {}

SectionAssembler::~SectionAssembler() = default;

void SectionAssembler::Push(ByteSpan packet) {
    std::array<uint8_t, PACKET_SIZE> copy{};
    std::copy(packet.begin(), packet.end(), copy.begin());
    dvbpsi_packet_push(m_library->handle, copy.data());
}

}  // namespace applist::sim
