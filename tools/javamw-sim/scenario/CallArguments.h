// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "common/Result.h"
#include "link/Protocol.h"

namespace applist::sim {

/// How the arguments of function are written: "ID [NAME]"; empty for a function without any.
const char* ArgumentForm(Function function);

/// The items that the arguments of a call stand for, or what is wrong with them.
Result<Items> ParseCallArguments(Function function, const std::vector<std::string>& arguments);

}  // namespace applist::sim
