// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Result.h"
#include "link/Handshake.h"
#include "link/Protocol.h"

/// The language of scenarios. A statement is parsed to an action, which runs it. Stage.cpp,
/// Messages.cpp and Expectations.cpp contain both the syntax and the effect of their statements.
namespace applist::sim {

class StatementRunner;
struct Outcome;

using Duration = std::chrono::milliseconds;

/// A valid or invalid message to the application.
struct Message {
    /// Returns the bytes of copy number copy, from 1, of a message that is sent several times.
    /// "{n}" in ids and names of items becomes that number, and a seed increases by one per copy.
    std::function<Bytes(unsigned copy)> bytes;
    std::optional<FunctionCall> call{};  ///< Absent if the message may be invalid.
    bool asSignal = false;
    unsigned copies = 1;
    bool awaitReply = true;  ///< Calls only.
};

/// What a statement does.
struct Action {
    enum class Kind {
        Setting,        ///< Only changes a setting and cannot fail.
        Sending,        ///< Sends its message.
        ErrorExpected,  ///< Expects that the last call failed.
        Other,
    };
    enum class Needs { Nothing, Bus, Application };

    /// Called by StatementRunner::Execute() when what it needs is there.
    std::function<Outcome(StatementRunner& runner)> run;
    Kind kind = Kind::Other;
    Needs needs = Needs::Nothing;
    std::optional<Message> message{};  ///< What it sends, or the call whose reply it checks.
    std::string busctl{};  ///< Arguments with which busctl does the same; empty if it cannot.
    std::optional<std::string> comment{};  ///< A comment in the results.

    bool IsSetting() const { return kind == Kind::Setting; }
};

/// A parsed statement.
struct Statement {
    Action action;
    size_t line = 0;   ///< From 1.
    std::string text;  ///< As written, without surrounding blanks and comment.
};

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

/// A parsed scenario. If it has errors, the statements of those lines are missing.
struct ParsedScenario {
    std::vector<Statement> statements;
    std::vector<ScenarioError> errors;  ///< In the order of the lines, at most one per line.
};

/// Parses the whole text line by line. Accepts any bytes.
ParsedScenario ParseScenario(std::string_view text);

/// The bus and the application for the busctl command lines.
struct BusctlTarget {
    std::string address;      ///< Address of the bus; empty for the system bus.
    std::string application;  ///< Unique name; empty if no application is known.
};
/// Returns the command lines for a POSIX shell that do the same as action with busctl. For an
/// expectation, they print the value that it checks. Fails with the reason if busctl cannot do the
/// same.
Result<std::vector<std::string>> BusctlLines(const Action& action, const BusctlTarget& target);

/// A statement of the language, for help and completion.
struct StatementForm {
    std::string keyword;
    std::string words;    ///< Arguments: "ID=NAME...".
    std::string meaning;  ///< Description on one line.
};
/// All statements in the order of the manual.
const std::vector<StatementForm>& StatementForms();

/// Returns the syntax of the arguments of function on a command line: "ID [NAME]". Empty for a
/// function without arguments.
const char* ArgumentForm(Function function);

/// Converts the arguments of a call on a command line to items.
Result<Items> ParseCallArguments(Function function, const std::vector<std::string>& arguments);

/// Returns the completions of the last word of text, sorted: commands of the shell, keywords of the
/// language, names of functions, events and steps, and ids. Ids that need quotes are omitted.
std::vector<std::string> Completions(std::string_view text, const std::set<std::string>& ids);

/// Returns the rest of the common prefix of all candidates after word, and a blank after the only
/// candidate.
std::string CommonRest(const std::vector<std::string>& candidates, std::string_view word);

/// Returns the last word of text; empty after a blank.
std::string_view LastWord(std::string_view text);

/// The commands of the shell in addition to the language.
const std::vector<StatementForm>& ShellCommands();

}  // namespace applist::sim
