// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Parser.h"

#include <algorithm>
#include <utility>

#include "scenario/Grammar.h"

namespace applist::sim {
namespace grammar {
namespace {

Action ReadExpect(Cursor& cursor) {
    static const std::vector<Rule> RULES = ExpectationRules();
    return ReadByKeyword(cursor, RULES, "what is expected");
}

std::vector<Rule> AllRules() {
    std::vector<Rule> rules = StageRules();
    for (Rule& rule : MessageRules()) {
        rules.push_back(std::move(rule));
    }
    rules.push_back({{"expect", "EXPECTATION", "What must be so"}, &ReadExpect});
    return rules;
}

const std::vector<Rule>& Rules() {
    static const std::vector<Rule> RULES = AllRules();
    return RULES;
}

std::vector<StatementForm> AllForms() {
    std::vector<StatementForm> forms;
    for (const Rule& rule : Rules()) {
        if (rule.read != &ReadExpect) {
            forms.push_back(rule.form);
        }
    }
    for (const Rule& rule : ExpectationRules()) {
        forms.push_back({"expect " + rule.form.keyword, rule.form.words, rule.form.meaning});
    }
    return forms;
}

}  // namespace

Action ReadByKeyword(Cursor& cursor, const std::vector<Rule>& rules, const std::string& what) {
    for (const Rule& rule : rules) {
        if (cursor.Skip(rule.form.keyword)) {
            return rule.read(cursor);
        }
    }
    const std::string word = cursor.Text(what);
    cursor.Refuse("'" + word + "' is not " + what);
    return rules.front().read(cursor);
}

}  // namespace grammar

namespace {

std::string AsWritten(std::string_view text, size_t end) {
    const size_t begin = text.find_first_not_of(" \t");
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

ParsedLine ParseStatement(std::string_view text, size_t line) {
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    ParsedLine result;
    const SplitLine split = SplitWords(text);
    if (split.error) {
        result.error = {line, split.error->column, split.error->message};
        return result;
    }
    if (split.words.empty()) {
        return result;
    }
    Cursor cursor(split);
    Action action = grammar::ReadByKeyword(cursor, grammar::Rules(), "a statement");
    cursor.End();
    if (cursor.error()) {
        result.error = {line, cursor.error()->column, cursor.error()->message};
    } else {
        result.statement = {std::move(action), line, AsWritten(text, split.endByte)};
    }
    return result;
}

ParsedScenario ParseScenario(std::string_view text) {
    ParsedScenario scenario;
    for (size_t line = 1; !text.empty(); ++line) {
        const size_t end = text.find('\n');
        ParsedLine parsed = ParseStatement(text.substr(0, end), line);
        if (parsed.error) {
            scenario.errors.push_back(std::move(*parsed.error));
        }
        if (parsed.statement) {
            scenario.statements.push_back(std::move(*parsed.statement));
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return scenario;
}

const std::vector<StatementForm>& StatementForms() {
    static const std::vector<StatementForm> FORMS = grammar::AllForms();
    return FORMS;
}

}  // namespace applist::sim
