// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "common/Result.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Returns the syntax of the arguments of function: "ID [NAME]"; empty if it takes none.
const char* ArgumentForm(Function function);

/// Converts the arguments of a call to items.
Result<Items> ParseCallArguments(Function function, const std::vector<std::string>& arguments);

}  // namespace applist::sim
