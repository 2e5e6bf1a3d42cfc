// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "Subcommand.h"

namespace applist::sim {

/// What works with every subcommand and without any: --help and --version.
const std::vector<Option>& GeneralOptions();

/// What --help prints: every subcommand and the exit codes.
std::string ProgramHelp(const std::vector<Subcommand>& subcommands);

/// What "SUBCOMMAND --help" prints.
std::string SubcommandHelp(const Subcommand& subcommand);

}  // namespace applist::sim
