// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ipc/gio-support.h"

namespace applist {

// Both directions copy the array as a whole. The wire bytes are the same as for an array built
// element by element, but this is about 1000 times faster.

GVariant* PayloadOf(const std::vector<char>& data) {
    GVariant* bytes =
        g_variant_new_fixed_array(G_VARIANT_TYPE_BYTE, data.data(), data.size(), sizeof(char));
    return g_variant_new_tuple(&bytes, 1);
}

std::optional<std::vector<char>> BytesOf(GVariant* parameters) {
    // Of a signal any types may arrive: GIO checks only the calls of declared methods.
    if (parameters == nullptr || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ay)"))) {
        return std::nullopt;
    }
    // Borrows the bytes of parameters; the result is the only copy.
    g_autoptr(GVariant) array = g_variant_get_child_value(parameters, 0);
    gsize size = 0;
    const auto* bytes =
        static_cast<const char*>(g_variant_get_fixed_array(array, &size, sizeof(char)));
    return std::vector<char>(bytes, bytes + size);
}

std::optional<NameOwnerChange> NameOwnerChangeOf(GVariant* parameters) {
    if (parameters == nullptr || !g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)"))) {
        return std::nullopt;
    }
    const char* name = nullptr;
    const char* oldOwner = nullptr;
    const char* newOwner = nullptr;
    g_variant_get(parameters, "(&s&s&s)", &name, &oldOwner, &newOwner);
    return NameOwnerChange{name, oldOwner, newOwner};
}

void LogAndClear(const char* what, GError*& error, LogPlace place) {
    if (error != nullptr) {
        LOG_ERROR_AT(place, "%s [%d] %s\n\n", what, error->code, error->message);
        g_clear_error(&error);
    }
}

}  // namespace applist
