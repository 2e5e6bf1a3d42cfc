// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Result.h"
#include "link/Handshake.h"
#include "link/Protocol.h"

/// The language of scenarios. A statement is a value of one of the types below. Stage.cpp,
/// Messages.cpp and Expectations.cpp contain both the syntax and the effect of their statements.
namespace applist::sim {

class StatementRunner;
struct Outcome;

using Duration = std::chrono::milliseconds;

// --- settings ---

/// Sets the default timeout of waits, replies and expectations.
struct SetTimeout {
    Duration duration{};
    Outcome Run(StatementRunner& runner) const;
};
/// Prints a comment in the results.
struct Note {
    std::string text;
    Outcome Run(StatementRunner& runner) const;
};
/// Selects the acting middleware. Each has its own connection.
struct UseMiddleware {
    std::string name;
    Outcome Run(StatementRunner& runner) const;
};
/// Sets the plan for announcements of the acting middleware; for all of them if announcement is
/// absent.
struct PlanHandshake {
    std::optional<Announcement> announcement;
    unsigned times = 1;  ///< 0 to skip it.
    Duration delay{};
    Outcome Run(StatementRunner& runner) const;
};
/// Drops the events and announcements received so far.
struct ForgetEvents {
    Outcome Run(StatementRunner& runner) const;
};

// --- the bus ---

/// Connects to the bus and begins the handshake, unless already connected.
struct Join {
    Outcome Run(StatementRunner& runner) const;
};
/// Closes the connection without further messages.
struct Vanish {
    Outcome Run(StatementRunner& runner) const;
};
/// Leaves the bus and joins it under a new unique name.
struct Restart {
    Outcome Run(StatementRunner& runner) const;
};
/// Announces now and ignores the plan.
struct Announce {
    Announcement announcement{};
    Outcome Run(StatementRunner& runner) const;
};

// --- messages ---

/// A valid call of a function.
struct FunctionCall {
    Function function{};
    Items items;
};
/// A valid or invalid message to the application.
struct Frame {
    /// Returns the bytes of copy number copy, from 1, of a message that is sent several times.
    /// "{n}" in ids and names of items becomes that number, and a seed increases by one per copy.
    std::function<Bytes(unsigned copy)> bytes;
    std::optional<FunctionCall> call;  ///< Absent if the message may be invalid.
};
/// Sends a frame as a call, or as a signal.
struct Send {
    Frame frame;
    bool asSignal = false;
    unsigned copies = 1;
    bool awaitReply = true;  ///< Calls only.
    Outcome Run(StatementRunner& runner) const;
};

// --- waits and expectations; within: the timeout if absent ---

/// Waits for this time.
struct WaitFor {
    Duration duration{};
    Outcome Run(StatementRunner& runner) const;
};
/// Waits until an application is connected.
struct WaitForConnection {
    bool connected = true;  ///< False waits for the disconnection.
    std::optional<Duration> within;
    Outcome Run(StatementRunner& runner) const;
};
/// Expects these as the next events, without others in between.
struct ExpectEvent {
    Event event{};
    unsigned times = 1;
    std::optional<Duration> within;
    Outcome Run(StatementRunner& runner) const;
};
/// Expects that no event is pending and that none arrives during this time.
struct ExpectNoEvent {
    Duration duration{};
    Outcome Run(StatementRunner& runner) const;
};
/// Expects this as the next announcement of the application.
struct ExpectAnnouncement {
    Announcement announcement{};
    std::optional<Duration> within;
    Outcome Run(StatementRunner& runner) const;
};
/// Matches an item by its id, and by its name if given.
struct ItemPattern {
    std::string id;
    std::optional<std::string> name;

    bool operator==(const ItemPattern&) const = default;
};
/// Expects exactly these items in this order.
struct ExpectList {
    std::vector<ItemPattern> items;
    Outcome Run(StatementRunner& runner) const;
};
/// Expects this number of items in the list.
struct ExpectCount {
    size_t count = 0;
    Outcome Run(StatementRunner& runner) const;
};
/// Expects this item as the selection.
struct ExpectSelection {
    std::optional<ItemPattern> item;  ///< Absent if no item must be selected.
    Outcome Run(StatementRunner& runner) const;
};
/// Expects these items, or these bytes, in the last reply.
struct ExpectReply {
    std::variant<std::vector<ItemPattern>, Bytes> content;
    Outcome Run(StatementRunner& runner) const;
};
/// Expects that the last call failed with an error that contains text.
struct ExpectError {
    std::string text;
    Outcome Run(StatementRunner& runner) const;
};

using Action = std::variant<SetTimeout, Note, UseMiddleware, PlanHandshake, ForgetEvents, Join,
                            Vanish, Restart, Announce, Send, WaitFor, WaitForConnection,
                            ExpectEvent, ExpectNoEvent, ExpectAnnouncement, ExpectList, ExpectCount,
                            ExpectSelection, ExpectReply, ExpectError>;

/// True if the statement only changes a setting and cannot fail.
bool IsSetting(const Action& action);

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

}  // namespace applist::sim
