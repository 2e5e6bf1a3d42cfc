// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/Subcommand.h"
#include "common/Result.h"

namespace applist::sim {

/// The work that arguments ask for: a subcommand's, or to print the help or the version. Options
/// may stand anywhere; after "--" nothing is an option. arguments begin with the program's name. A
/// failure says what is wrong and where to read more.
Result<Job> ParseCommandLine(const std::vector<Subcommand>& subcommands,
                             const std::vector<std::string>& arguments);

}  // namespace applist::sim
