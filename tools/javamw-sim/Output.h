// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "protocol/Item.h"

namespace applist::sim {

/// text on one line whatever it holds: control bytes as "\x0a", a backslash twice.
std::string OneLine(const std::string& text);

/// "id<TAB>name", each on one line.
std::string ItemLine(const Item& item);

/// Writes line and a newline to standard output at once, for whoever reads along. False when
/// nobody can.
[[nodiscard]] bool WriteLine(const std::string& line);

/// Writes "javamw-sim: ", message and a newline to standard error.
void Complain(const std::string& message);

}  // namespace applist::sim
