// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace applist::headless {

/// What a line of the input does.
enum class Action {
    Key,          ///< Releases the key called text, a name of the program such as "XF86Back".
    MoveUp,       ///< Moves the focus up a row, like the list widget, and releases the key.
    MoveDown,     ///< Moves the focus down a row in the same way.
    Ok,           ///< Activates the focused row.
    SecondStart,  ///< Starts the program while it runs, which closes the list.
    Die,          ///< Ends the application as if it had crashed.
    Wait,         ///< Advances the application's clock by seconds.
    Hang,         ///< Does not answer for seconds of real time.
    Await,        ///< Waits until condition holds for text.
    State,        ///< Prints the state as a line of JSON.
};

/// What an Await waits for. Those with an argument compare it with Statement::text.
enum class Condition { Connected, Disconnected, Ended, Items, Item, Selected };

/// A parsed line. condition, text and seconds are used by the actions that mention them.
struct Statement {
    Action action = Action::State;
    Condition condition = Condition::Connected;
    std::string text{};
    double seconds = 0;
};

/// A line without a statement: blank or a comment.
struct NoStatement {};

/// The reason why a line is not a statement.
struct Problem {
    std::string text;
};

/// Parses one line without its line end. Words may be separated by any blanks; "#" starts a comment
/// at the beginning of a line.
std::variant<Statement, NoStatement, Problem> ParseStatement(std::string_view line);

}  // namespace applist::headless
