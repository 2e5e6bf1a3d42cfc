// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <string_view>

namespace applist::sim {

/// How many columns of a screen the characters of text take; text is UTF-8.
size_t ColumnsOf(std::string_view text);

/// How many rows above the cursor text begins on a screen of so many columns, when the cursor is
/// right behind it.
size_t RowsAbove(std::string_view text, size_t columns);

}  // namespace applist::sim
