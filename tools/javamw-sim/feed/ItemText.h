// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

#include "Result.h"
#include "protocol/Item.h"

namespace applist::sim {

/// Items from text: a line "id<TAB>name" each, UTF-8; blank lines and lines that begin with "#"
/// are skipped. The reason of a failure begins with the number of the line: "3: ...".
Result<Items> ParseItemText(std::string_view text);

}  // namespace applist::sim
