// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <span>

#include <gio/gio.h>

namespace applist::test {

/// Returns bytes as the content of a message of the channel, "(ay)", with a floating reference.
inline GVariant* Payload(std::span<const char> bytes) {
    return g_variant_new("(@ay)", g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, bytes.data(),
                                                            bytes.size(), sizeof(char)));
}

}  // namespace applist::test
