// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <variant>

#include "link/Protocol.h"

namespace applist::sim {

/// A call as it should be.
struct RegularFrame {
    Function function{};
    Items items;
};

/// Exactly these bytes.
struct RawFrame {
    Bytes bytes;
};

/// A call of size bytes in all, whose payload announces an item that it does not hold.
struct HugeFrame {
    size_t size = 0;
    Function function = Function::AddItems;
};

/// A call with bits changed at places that the seed determines, on every machine alike.
struct FlippedFrame {
    RegularFrame call;
    uint32_t seed = 0;
    unsigned bits = 1;
};

/// A call whose payload ends early; the function's id is still there.
struct CutFrame {
    RegularFrame call;
    size_t payloadSize = 0;
};

/// A message to the application, good or bad.
using Frame = std::variant<RegularFrame, RawFrame, HugeFrame, FlippedFrame, CutFrame>;

/// The bytes of the copy-th message, from 1, when a frame is sent several times: "{n}" in ids and
/// names of items is that number, and a seed grows by one from copy to copy.
Bytes BytesOf(const Frame& frame, unsigned copy);

}  // namespace applist::sim
