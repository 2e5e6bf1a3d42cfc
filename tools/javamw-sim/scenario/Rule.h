// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "scenario/Statement.h"
#include "scenario/Words.h"

namespace applist::sim {

/// A form of line and the function that takes the words after its keyword. The result counts only
/// if the cursor has no error afterwards.
struct Rule {
    StatementForm form;
    Action (*read)(Cursor&);
};
using Rules = std::vector<Rule>;

// Each table is in the file of its statements, in the order of the manual.
const Rules& StageRules();
const Rules& MessageRules();
const Rules& ExpectationRules();  ///< Without the keyword "expect".

/// Takes a keyword that is in rules, and the words that belong to it. If the next word is not such
/// a keyword, the error message says that it is not "what".
Action ReadByKeyword(Cursor& cursor, const Rules& rules, const std::string& what);

}  // namespace applist::sim
