// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "scenario/Cursor.h"
#include "scenario/Parser.h"

/// The rules of the language, one for each form of line.
namespace applist::sim::grammar {

/// A form and what reads the words behind its keyword. What it returns counts only if the cursor
/// then has no error.
struct Rule {
    StatementForm form;
    Action (*read)(Cursor&);
};

// Settings and the bus, messages, waits and expectations.
std::vector<Rule> StageRules();
std::vector<Rule> MessageRules();
std::vector<Rule> ExpectationRules();

/// Takes a keyword of rules and what belongs to it. what names the keyword when it is missing.
Action ReadByKeyword(Cursor& cursor, const std::vector<Rule>& rules, const std::string& what);

}  // namespace applist::sim::grammar
