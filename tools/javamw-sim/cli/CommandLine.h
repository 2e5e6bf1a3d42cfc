// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/Subcommand.h"
#include "common/Result.h"

namespace applist::sim {

/// Returns the work that arguments ask for: that of a subcommand, or printing the help or the
/// version. Options may appear anywhere; after "--" all words are arguments. arguments begin with
/// the name of the program. A failure contains the error and where to read more.
Result<Job> ParseCommandLine(const std::vector<Subcommand>& subcommands,
                             const std::vector<std::string>& arguments);

}  // namespace applist::sim
