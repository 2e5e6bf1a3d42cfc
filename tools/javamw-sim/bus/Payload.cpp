// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bus/Payload.h"

namespace applist::sim {

// As one fixed array: byte by byte would cost a hundred times as much.
GVariant* ToVariant(const Bytes& bytes) {
    return g_variant_new("(@ay)", g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(),
                                                            bytes.size(), sizeof(char)));
}

bool HoldsBytes(GVariant* parameters) {
    return g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ay)")) != FALSE;
}

Bytes FromVariant(GVariant* parameters) {
    const GVariantPtr array(g_variant_get_child_value(parameters, 0));
    size_t size = 0;
    const auto* data =
        static_cast<const char*>(g_variant_get_fixed_array(array.get(), &size, sizeof(char)));
    return {data, data + size};
}

}  // namespace applist::sim
