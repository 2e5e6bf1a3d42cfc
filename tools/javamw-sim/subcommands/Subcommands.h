// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "Subcommand.h"

namespace applist::sim {

/// All that the program can do, in the order of the help.
const std::vector<Subcommand>& Subcommands();

// The rows, each in a file of its own.
Subcommand ApplicationsSubcommand();
Subcommand CallSubcommand();
Subcommand CompareSubcommand();
Subcommand RecordSubcommand();
Subcommand ReplaySubcommand();
Subcommand RunSubcommand();
Subcommand ServeSubcommand();
Subcommand ShellSubcommand();
Subcommand WatchSubcommand();

}  // namespace applist::sim
