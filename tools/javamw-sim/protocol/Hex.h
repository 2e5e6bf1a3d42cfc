// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "protocol/Protocol.h"

namespace applist::sim {

/// Two lower-case digits for each byte.
std::string ToHex(std::string_view bytes);
inline std::string ToHex(const Bytes& bytes) {
    return ToHex(std::string_view(bytes.data(), bytes.size()));
}

/// Nothing when text is anything but pairs of digits.
std::optional<Bytes> FromHex(std::string_view text);

}  // namespace applist::sim
