// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "cli/Subcommand.h"

namespace applist::sim {

/// Options that every subcommand and the program itself accept: --help and --version.
const std::vector<Option>& GeneralOptions();

/// Returns the output of --help: all subcommands and the exit codes.
std::string ProgramHelp(const std::vector<Subcommand>& subcommands);

/// Returns the output of "SUBCOMMAND --help".
std::string SubcommandHelp(const Subcommand& subcommand);

/// Returns " (did you mean WORD?)" with the known word that is most similar to word, or an empty
/// string if none is similar.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

}  // namespace applist::sim
