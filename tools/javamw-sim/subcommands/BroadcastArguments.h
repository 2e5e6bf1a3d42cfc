// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "Subcommand.h"
#include "feed/ItemSource.h"

namespace applist::sim {

/// The options of every subcommand that reads a broadcast from a file.
std::vector<Option> BroadcastOptions();

/// What those options say, or what is wrong with them; the interval is not one of them.
Result<BroadcastFeedOptions> BroadcastFeedOptionsFrom(const Arguments& given);

}  // namespace applist::sim
