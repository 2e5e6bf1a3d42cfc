// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <variant>

#include "link/Protocol.h"

namespace applist::sim {

/// A valid call.
struct RegularFrame {
    Function function{};
    Items items;
};

/// These exact bytes.
struct RawFrame {
    Bytes bytes;
};

/// A call with a total size of size bytes, whose payload announces a longer item than it contains.
struct HugeFrame {
    size_t size = 0;
    Function function = Function::AddItems;
};

/// A call with flipped bits. The seed determines their positions on every machine alike.
struct FlippedFrame {
    RegularFrame call;
    uint32_t seed = 0;
    unsigned bits = 1;
};

/// A call with a truncated payload and an intact function id.
struct CutFrame {
    RegularFrame call;
    size_t payloadSize = 0;
};

/// A valid or invalid message to the application.
using Frame = std::variant<RegularFrame, RawFrame, HugeFrame, FlippedFrame, CutFrame>;

/// Returns the bytes of copy number copy, from 1, of a frame that is sent several times. "{n}" in
/// ids and names of items becomes that number, and a seed increases by one per copy.
Bytes BytesOf(const Frame& frame, unsigned copy);

}  // namespace applist::sim
