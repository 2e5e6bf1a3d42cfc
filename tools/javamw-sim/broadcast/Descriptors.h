// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "broadcast/ByteReader.h"

namespace applist::sim {

/// Calls visit(tag, content) for each descriptor of a loop, up to the first that does not fit.
template <typename Visit>
void ForEachDescriptor(ByteSpan loop, Visit&& visit) {
    ByteReader reader(loop);
    while (reader.left() > 0) {
        const uint8_t tag = reader.U8();
        const ByteSpan content = reader.Take(reader.U8());
        if (reader.failed()) {
            return;
        }
        visit(tag, content);
    }
}

}  // namespace applist::sim
