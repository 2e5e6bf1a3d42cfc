// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "link/Handshake.h"
#include "link/Protocol.h"
#include "scenario/Frame.h"

/// Statements of a scenario as plain values.
namespace applist::sim {

using Duration = std::chrono::milliseconds;

// --- settings ---

/// Sets the default timeout of waits, replies and expectations.
struct SetTimeout {
    Duration duration{};
};
/// Prints a comment in the results.
struct Note {
    std::string text;
};
/// Selects the acting middleware. Each has its own connection.
struct UseMiddleware {
    std::string name;
};
/// Sets the plan for announcements of the acting middleware; for all of them if announcement is
/// absent.
struct PlanHandshake {
    std::optional<Announcement> announcement;
    unsigned times = 1;  ///< 0 to skip it.
    Duration delay{};
};
/// Drops the events and announcements received so far.
struct ForgetEvents {};

// --- the bus ---

struct Join {};
/// Closes the connection without further messages.
struct Vanish {};
/// Leaves the bus and joins it under a new unique name.
struct Restart {};
/// Announces now and ignores the plan.
struct Announce {
    Announcement announcement{};
};

// --- messages ---

/// Sends a frame as a call, or as a signal.
struct Send {
    Frame frame;
    bool asSignal = false;
    unsigned copies = 1;
    bool awaitReply = true;  ///< Calls only.
};

// --- waits and expectations; within: the timeout if absent ---

struct WaitFor {
    Duration duration{};
};
struct WaitForConnection {
    bool connected = true;  ///< False waits for the disconnection.
    std::optional<Duration> within;
};
/// Expects these as the next events, without others in between.
struct ExpectEvent {
    Event event{};
    unsigned times = 1;
    std::optional<Duration> within;
};
struct ExpectNoEvent {
    Duration duration{};
};
/// Expects this as the next announcement of the application.
struct ExpectAnnouncement {
    Announcement announcement{};
    std::optional<Duration> within;
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
};
struct ExpectCount {
    size_t count = 0;
};
struct ExpectSelection {
    std::optional<ItemPattern> item;  ///< Absent if no item must be selected.
};
/// Expects these items, or these bytes, in the last reply.
struct ExpectReply {
    std::variant<std::vector<ItemPattern>, Bytes> content;
};
/// Expects that the last call failed with an error that contains text.
struct ExpectError {
    std::string text;
};

using Action = std::variant<SetTimeout, Note, UseMiddleware, PlanHandshake, ForgetEvents, Join,
                            Vanish, Restart, Announce, Send, WaitFor, WaitForConnection,
                            ExpectEvent, ExpectNoEvent, ExpectAnnouncement, ExpectList, ExpectCount,
                            ExpectSelection, ExpectReply, ExpectError>;

/// A parsed statement.
struct Statement {
    Action action;
    size_t line = 0;   ///< From 1.
    std::string text;  ///< As written, without surrounding blanks and comment.
};

/// True if the statement only changes a setting and cannot fail.
inline bool IsSetting(const Action& action) {
    return std::holds_alternative<SetTimeout>(action) || std::holds_alternative<Note>(action) ||
           std::holds_alternative<UseMiddleware>(action) ||
           std::holds_alternative<PlanHandshake>(action) ||
           std::holds_alternative<ForgetEvents>(action);
}

}  // namespace applist::sim
