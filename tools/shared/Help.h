// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "shared/CommandLine.h"

namespace applist::tools {

/// Returns the output of --help: all commands and the exit codes.
std::string ProgramHelp(const Program& program);

/// Returns the output of "COMMAND --help".
std::string CommandHelp(const Program& program, const Command& command);

/// Returns " (did you mean WORD?)" with the known word that is most similar to word, or an empty
/// string if none is similar.
std::string Suggestion(const std::string& word, const std::vector<std::string>& known);

}  // namespace applist::tools
