// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <array>
#include <cstdlib>
#include <memory>

extern "C" {
#include <aribb24/aribb24.h>
// The library's headers need this order.
#include <aribb24/decoder.h>
}

#include "broadcast/Text.h"

namespace applist::sim {
namespace {

// A macro of one byte stands for several characters.
constexpr size_t MAX_GROWTH = 16;
// The library closes a text that fills its room with a zero behind it.
constexpr size_t ROOM_FOR_ZERO = 1;

struct DestroyInstance {
    void operator()(arib_instance_t* instance) const { arib_instance_destroy(instance); }
};
using Instance = std::unique_ptr<arib_instance_t, DestroyInstance>;

}  // namespace

std::optional<std::string> DecodeAribText(ByteSpan text) {
    const Instance instance(arib_instance_new(nullptr));
    if (!instance) {
        return std::nullopt;
    }
    arib_register_messages_callback(instance.get(), [](void*, const char*) {});
    arib_decoder_t* decoder = arib_get_decoder(instance.get());
    if (decoder == nullptr) {
        return std::nullopt;
    }
    std::string utf8(text.size() * MAX_GROWTH + ROOM_FOR_ZERO, '\0');
    arib_initialize_decoder(decoder);
    const size_t size = arib_decode_buffer(decoder, text.data(), text.size(), utf8.data(),
                                           utf8.size() - ROOM_FOR_ZERO);
    arib_finalize_decoder(decoder);
    utf8.resize(std::min(size, utf8.size()));
    std::erase_if(utf8, [](char byte) { return static_cast<unsigned char>(byte) < 0x20; });
    return utf8;
}

}  // namespace applist::sim
