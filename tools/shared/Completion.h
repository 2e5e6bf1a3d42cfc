// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "shared/CommandLine.h"

namespace applist::tools {

/// A line that stands for the names of files in the output of Candidates().
constexpr const char* FILES = "*";

/// Returns what can stand for the last of words, one line each: the candidate, a tab and its
/// description, if it has one; or FILES. words are those after the program's name, up to the one
/// that is being typed. They may be split at "=", as bash does. For "--text=d" the candidates are
/// only values.
std::vector<std::string> Candidates(const Program& program, const std::vector<std::string>& words);

}  // namespace applist::tools
