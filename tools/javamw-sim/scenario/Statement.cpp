// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/Statement.h"

#include <algorithm>
#include <glib.h>
#include <utility>

#include "link/Protocol.h"
#include "scenario/Words.h"
#include "shared/LineReader.h"

namespace applist::sim {
namespace {

Action ReadExpect(Cursor& cursor) {
    return ReadByKeyword(cursor, ExpectationRules(), "an expectation");
}

const Rules& AllRules() {
    static const Rules ALL = [] {
        Rules all;
        for (const Rules& rules : {StageRules(), MessageRules()}) {
            all.insert(all.end(), rules.begin(), rules.end());
        }
        all.push_back({{"expect", "EXPECTATION", "Check an expectation"}, ReadExpect});
        return all;
    }();
    return ALL;
}

std::string AsWritten(std::string_view text, size_t end) {
    const size_t begin = text.find_first_not_of(" \t");
    return std::string(text.substr(begin, end - begin));
}

}  // namespace

const std::vector<StatementForm>& StatementForms() {
    static const std::vector<StatementForm> FORMS = [] {
        std::vector<StatementForm> forms;
        for (const Rule& rule : AllRules()) {
            forms.push_back(rule.form);
        }
        forms.pop_back();
        for (const Rule& rule : ExpectationRules()) {
            forms.push_back({"expect " + rule.form.keyword, rule.form.words, rule.form.meaning});
        }
        return forms;
    }();
    return FORMS;
}

ParsedLine ParseStatement(std::string_view text, size_t line) {
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    const SplitLine split = SplitWords(text);
    ParsedLine result{std::nullopt, split.error};
    if (!split.error && !split.words.empty()) {
        Cursor cursor(split);
        Action action = ReadByKeyword(cursor, AllRules(), "a statement");
        cursor.End();
        result.error = cursor.error();
        if (!result.error) {
            result.statement = {std::move(action), line, AsWritten(text, split.endByte)};
        }
    }
    if (result.error) {
        result.error->line = line;
    }
    return result;
}

ParsedScenario ParseScenario(std::string_view text) {
    ParsedScenario scenario;
    size_t number = 0;
    for (const std::string_view line : tools::LinesOf(text)) {
        ParsedLine parsed = ParseStatement(line, ++number);
        if (parsed.error) {
            scenario.errors.push_back(std::move(*parsed.error));
        }
        if (parsed.statement) {
            scenario.statements.push_back(std::move(*parsed.statement));
        }
    }
    return scenario;
}

namespace {

using Lines = Result<std::vector<std::string>>;

// Longer command lines exceed the limit of the kernel.
constexpr size_t LONGEST_MESSAGE = 20000;
// Further copies of a message are omitted.
constexpr unsigned MOST_LINES = 10;

std::string ShellQuoted(const std::string& text) {
    g_autofree char* quoted = g_shell_quote(text.c_str());
    return quoted;
}

std::string BusctlLine(const BusctlTarget& target, const std::string& rest) {
    return (target.address.empty() ? "busctl --system"
                                   : "busctl --address=" + ShellQuoted(target.address)) +
           rest;
}

// The payload is an array of bytes for busctl: the count, then each byte.
std::string MessageLine(const Bytes& bytes, bool asSignal, const BusctlTarget& target) {
    const std::string place = std::string(names::OBJECT_PATH) + ' ' + names::INTERFACE + ' ';
    std::string line =
        asSignal ? " --destination=" + target.application + " emit " + place + names::SIGNAL
                 : " call " + target.application + ' ' + place + names::METHOD;
    line += " ay " + std::to_string(bytes.size());
    for (const char byte : bytes) {
        line += ' ' + std::to_string(static_cast<uint8_t>(byte));
    }
    return BusctlLine(target, line);
}

Lines MessageLines(const Message& message, const BusctlTarget& target) {
    if (target.application.empty()) {
        return Lines::Failure(
            "no application has announced itself; \"wait connected\" waits for one");
    }
    std::vector<std::string> lines;
    for (unsigned copy = 1; copy <= std::min(message.copies, MOST_LINES); ++copy) {
        const Bytes bytes = message.bytes(copy);
        if (bytes.size() > LONGEST_MESSAGE) {
            return Lines::Failure(std::to_string(bytes.size()) +
                                  " bytes are too many for a command line");
        }
        lines.push_back(MessageLine(bytes, message.asSignal, target));
    }
    if (message.copies > MOST_LINES) {
        lines.push_back("# and " + std::to_string(message.copies - MOST_LINES) +
                        " more like these");
    }
    return lines;
}

}  // namespace

Result<std::vector<std::string>> BusctlLines(const Action& action, const BusctlTarget& target) {
    if (action.message) {
        return MessageLines(*action.message, target);
    }
    return action.busctl.empty() ? Lines::Failure("busctl cannot do this")
                                 : Lines(std::vector{BusctlLine(target, action.busctl)});
}

}  // namespace applist::sim
