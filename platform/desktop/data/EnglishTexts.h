// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <array>
#include <string_view>

namespace applist::desktop {

struct EnglishText {
    std::string_view id;
    const char* text;
};

/// The English catalogue, generated from po/en.po and compiled in.
inline constexpr auto ENGLISH_TEXTS = std::to_array<EnglishText>({
#include "EnglishTexts.inc"
});

}  // namespace applist::desktop
