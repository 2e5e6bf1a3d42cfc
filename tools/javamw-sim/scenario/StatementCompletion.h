// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/Statement.h"

namespace applist::sim {

/// Returns the completions of the last word of text, sorted: commands of the shell, keywords of the
/// language, names of functions, events and steps, and ids. Ids that need quotes are omitted.
std::vector<std::string> Completions(std::string_view text, const std::set<std::string>& ids);

/// Returns the rest of the common prefix of all candidates after word, and a blank after the only
/// candidate.
std::string CommonRest(const std::vector<std::string>& candidates, std::string_view word);

/// Returns the last word of text; empty after a blank.
std::string_view LastWord(std::string_view text);

/// The commands of the shell in addition to the language.
const std::vector<StatementForm>& ShellCommands();

}  // namespace applist::sim
