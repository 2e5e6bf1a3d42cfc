// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/Subcommand.h"

namespace applist::sim {

/// What works with every subcommand and without any: --help and --version.
const std::vector<Option>& GeneralOptions();

/// What --help prints: every subcommand and the exit codes.
std::string ProgramHelp(const std::vector<Subcommand>& subcommands);

/// What "SUBCOMMAND --help" prints.
std::string SubcommandHelp(const Subcommand& subcommand);

/// " (did you mean WORD?)" with the word of known that is spelled most like word; empty if none is.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

}  // namespace applist::sim
