// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <optional>

#include "fuzz/Properties.h"
#include "scenario/Statement.h"
#include "scenario/Words.h"
#include "shared/LineReader.h"

namespace applist::test {
namespace {

bool IsInside(const sim::ScenarioError& error, const std::vector<std::string_view>& lines) {
    return error.line >= 1 && error.line <= lines.size() && error.column >= 1 &&
           error.column <= lines[error.line - 1].size() + 1 && !error.message.empty();
}

// True if the statement's text parses to the same statement.
bool ReadsBack(const sim::Statement& statement) {
    const auto again = sim::ParseStatement(statement.text, statement.line);
    return again.statement && again.statement->text == statement.text &&
           again.statement->action.kind == statement.action.kind &&
           again.statement->action.comment == statement.action.comment &&
           again.statement->action.busctl == statement.action.busctl;
}

// True if the statement names its bytes, which may be fewer than an id has.
bool IsRaw(const std::string& text) {
    const sim::SplitLine line = sim::SplitWords(text);
    return std::any_of(line.words.begin(), line.words.end(), [](const auto& word) {
        return word.text == "send-hex" || word.text == "send-short" || word.text == "signal-hex";
    });
}

// Returns the size that a "send-huge" in the text asks for.
std::optional<size_t> SizeOfHuge(const std::string& text) {
    sim::SplitLine line = sim::SplitWords(text);
    const auto huge = std::find_if(line.words.begin(), line.words.end(), [](const auto& word) {
        return word.plain && word.text == "send-huge";
    });
    if (huge == line.words.end()) {
        return std::nullopt;
    }
    line.words.erase(line.words.begin(), huge + 1);
    return sim::Cursor(line).Size();
}

// Large frames are skipped: they repeat the same few bytes and only take time.
bool HasItsSize(const sim::Statement& statement) {
    constexpr size_t SMALL = 4096;
    const auto& message = statement.action.message;
    if (!message) {
        return true;
    }
    const auto huge = message->call ? std::nullopt : SizeOfHuge(statement.text);
    if (huge) {
        return *huge > SMALL || message->bytes(1).size() == std::max<size_t>(*huge, 4);
    }
    const size_t size = message->bytes(message->copies).size();
    return size >= 4 || IsRaw(statement.text);
}

}  // namespace

std::string CheckScenario(std::string_view bytes) {
    const std::vector<std::string_view> lines = tools::LinesOf(bytes);
    const auto parsed = sim::ParseScenario(bytes);
    if (parsed.statements.size() + parsed.errors.size() > lines.size()) {
        return "there are more results than lines";
    }
    if (!std::all_of(parsed.errors.begin(), parsed.errors.end(),
                     [&](const auto& error) { return IsInside(error, lines); })) {
        return "an error is outside the text";
    }
    if (!std::all_of(parsed.statements.begin(), parsed.statements.end(), ReadsBack)) {
        return "a statement does not read back";
    }
    return std::all_of(parsed.statements.begin(), parsed.statements.end(), HasItsSize)
               ? ""
               : "a frame has another size than was asked for";
}

std::vector<std::string> ScenarioSeeds() {
    return {
        "",
        R"(wait connected within 5s
add a=Alpha "b c"="\u{1f4fa}\x00"
expect list a=Alpha b
)",
        "handshake delay syn-ack 300ms\r\nflood 10 send-flipped 7 2 ModifyItem a b=B\r\n",
        "send-huge 64k RemoveItem\nsend-cut 3 AddItems a=A\nsend-hex d1070000\nexpect reply hex 00",
        "timeout 1min\nnote \"a # b\" # c\nexpect event ItemChanged times 3 within 2s\nexpect no",
        "partner \"\"\npost clear\nexpect error \"\\\\\"\nexpect selection \"none\"",
    };
}

}  // namespace applist::test
