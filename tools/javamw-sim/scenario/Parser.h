// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/Statement.h"

namespace applist::sim {

/// An error in a scenario and its position.
struct ScenarioError {
    size_t line = 0;    ///< From 1.
    size_t column = 0;  ///< In characters, from 1.
    std::string message;
};

/// The result of parsing one line: a statement, an error, or neither if the line is empty.
struct ParsedLine {
    std::optional<Statement> statement;
    std::optional<ScenarioError> error;
};

/// Parses one line without its line end. line is its number in messages. Accepts any bytes.
ParsedLine ParseStatement(std::string_view text, size_t line = 1);

/// A parsed scenario. The statements are complete only if there are no errors.
struct ParsedScenario {
    std::vector<Statement> statements;
    std::vector<ScenarioError> errors;  ///< In the order of the lines, at most one per line.
};

/// Parses the whole text line by line. Accepts any bytes.
ParsedScenario ParseScenario(std::string_view text);

/// A statement of the language, for help and completion.
struct StatementForm {
    std::string keyword;
    std::string words;    ///< Arguments: "ID=NAME...".
    std::string meaning;  ///< Description on one line.
};
/// All statements in the order of the manual.
const std::vector<StatementForm>& StatementForms();

}  // namespace applist::sim
