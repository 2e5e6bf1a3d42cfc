// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace applist::sim {

/// What the word at the end of text could become, sorted: commands of the shell, keywords of the
/// language, names of functions, events and steps, and ids. An id that must be written in quotes is
/// not among them.
std::vector<std::string> Completions(std::string_view text, const std::set<std::string>& ids);

/// What has to be typed to reach what all candidates have in common, and a blank behind the only
/// one. word is what of it is there.
std::string CommonRest(const std::vector<std::string>& candidates, std::string_view word);

/// The word at the end of text; empty behind a blank.
std::string_view LastWord(std::string_view text);

/// What a shell understands besides the language.
struct ShellCommand {
    std::string name;
    std::string words;
    std::string meaning;  ///< On one line.
};
const std::vector<ShellCommand>& ShellCommands();

}  // namespace applist::sim
