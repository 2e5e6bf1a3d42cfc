// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/Statement.h"

namespace applist::sim {

/// What is wrong in a scenario, and where.
struct ScenarioError {
    size_t line = 0;    ///< From 1.
    size_t column = 0;  ///< In characters, from 1.
    std::string message;
};

/// What became of one line: a statement, an error, or neither if the line holds nothing.
struct ParsedLine {
    std::optional<Statement> statement;
    std::optional<ScenarioError> error;
};

/// Parses one line without its line end. line is its number in messages. Takes any bytes.
ParsedLine ParseStatement(std::string_view text, size_t line = 1);

/// A whole scenario. The statements are complete only without errors.
struct ParsedScenario {
    std::vector<Statement> statements;
    std::vector<ScenarioError> errors;  ///< In the order of the lines, one per line at most.
};

/// Parses text line by line to its end. Takes any bytes.
ParsedScenario ParseScenario(std::string_view text);

/// One kind of line in the language, for those who explain it or complete it as it is typed.
struct StatementForm {
    std::string keyword;
    std::string words;    ///< What follows: "ID=NAME...".
    std::string meaning;  ///< On one line.
};
/// All of them, in the order of the manual.
const std::vector<StatementForm>& StatementForms();

}  // namespace applist::sim
