// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Statement.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace applist::headless {
namespace {

constexpr std::string_view BLANKS = " \t\r";
constexpr double LONGEST_SECONDS = 86400;

/// The kind of argument that follows the words of a statement.
enum class Argument { None, Time, Text, Number };

struct Form {
    std::string_view words;
    Argument argument;
    Statement statement;
};

const auto& Forms() {
    using enum Action;
    static const std::array<Form, 18> forms{{
        {"up", Argument::None, {.action = MoveUp, .text = "Up"}},
        {"down", Argument::None, {.action = MoveDown, .text = "Down"}},
        {"left", Argument::None, {.action = Key, .text = "Left"}},
        {"right", Argument::None, {.action = Key, .text = "Right"}},
        {"back", Argument::None, {.action = Key, .text = "XF86Back"}},
        {"exit", Argument::None, {.action = Key, .text = "XF86Exit"}},
        {"ok", Argument::None, {.action = Ok}},
        {"second start", Argument::None, {.action = SecondStart}},
        {"die", Argument::None, {.action = Die}},
        {"state", Argument::None, {.action = State}},
        {"wait", Argument::Time, {.action = Wait}},
        {"hang", Argument::Time, {.action = Hang}},
        {"await connected", Argument::None, {Await, Condition::Connected, {}, 0}},
        {"await disconnected", Argument::None, {Await, Condition::Disconnected, {}, 0}},
        {"await ended", Argument::None, {Await, Condition::Ended, {}, 0}},
        {"await items", Argument::Number, {Await, Condition::Items, {}, 0}},
        {"await item", Argument::Text, {Await, Condition::Item, {}, 0}},
        {"await selected", Argument::Text, {Await, Condition::Selected, {}, 0}},
    }};
    return forms;
}

std::string_view Trimmed(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
    return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

/// Returns text without words at its start. In text, any blanks may separate the words. Returns
/// nothing if text does not start with them.
std::optional<std::string_view> After(std::string_view words, std::string_view text) {
    while (!words.empty()) {
        const std::string_view word = words.substr(0, words.find(' '));
        if (text.substr(0, text.find_first_of(BLANKS)) != word) {
            return std::nullopt;
        }
        text = Trimmed(text.substr(word.size()));
        words = Trimmed(words.substr(word.size()));
    }
    return text;
}

std::optional<double> ParseTime(std::string_view text) {
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view unit = text.substr(static_cast<size_t>(end - text.data()));
    const double factor = unit == "ms" ? 0.001 : unit == "s" ? 1 : unit == "min" ? 60 : 0;
    const double seconds = number * factor;
    if (error != std::errc() || factor == 0 || !(seconds >= 0 && seconds <= LONGEST_SECONDS)) {
        return std::nullopt;
    }
    return seconds;
}

bool IsNumber(std::string_view text) {
    return !text.empty() && text.size() < 10 &&
           std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::variant<Statement, NoStatement, Problem> WithArgument(const Form& form,
                                                           std::string_view argument) {
    Statement statement = form.statement;
    const std::string words(form.words);
    const std::string given = "'" + std::string(argument) + "'";
    switch (form.argument) {
        case Argument::None:
            if (!argument.empty()) {
                return Problem{"'" + words + "' takes no argument, not " + given};
            }
            return statement;
        case Argument::Time:
            if (const auto seconds = ParseTime(argument)) {
                statement.seconds = *seconds;
                return statement;
            }
            return Problem{"'" + words + "' takes a time such as 200ms, 5s or 1min, up to a day, " +
                           "not " + given};
        case Argument::Number:
            if (!IsNumber(argument)) {
                return Problem{"'" + words + "' takes a number, not " + given};
            }
            break;
        case Argument::Text:
            if (argument.empty()) {
                return Problem{"'" + words + "' takes the id of an item"};
            }
            break;
    }
    statement.text = argument;
    return statement;
}

}  // namespace

std::variant<Statement, NoStatement, Problem> ParseStatement(std::string_view line) {
    line = Trimmed(line);
    if (line.empty() || line.front() == '#') {
        return NoStatement{};
    }
    for (const Form& form : Forms()) {
        if (const auto argument = After(form.words, line)) {
            return WithArgument(form, *argument);
        }
    }
    std::string known;
    for (const Form& form : Forms()) {
        known += (known.empty() ? "" : ", ") + std::string(form.words);
    }
    return Problem{"unknown statement '" + std::string(line) + "'; known: " + known};
}

}  // namespace applist::headless
