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

/// What the lines of a scenario mean: plain values, nothing is done yet.
namespace applist::sim {

using Duration = std::chrono::milliseconds;

// --- settings ---

/// How long every wait, reply and expectation has that says nothing itself.
struct SetTimeout {
    Duration duration{};
};
/// Says something to the reader of the results.
struct Note {
    std::string text;
};
/// Who acts from here on: one of several middlewares, each with a connection of its own.
struct UseMiddleware {
    std::string name;
};
/// How the acting middleware makes its announcements from here on; all of them if none is named.
struct PlanHandshake {
    std::optional<Announcement> announcement;
    unsigned times = 1;  ///< 0 to skip it.
    Duration delay{};
};
/// Drops the events and announcements that have come so far.
struct ForgetEvents {};

// --- the bus ---

struct Join {};
/// Leaves the bus without a word.
struct Vanish {};
/// Vanishes and joins under a new unique name.
struct Restart {};
/// Announces now, whatever the handshake's plan says.
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
    bool connected = true;  ///< Or for the end of the connection.
    std::optional<Duration> within;
};
/// The next events are these, nothing between them.
struct ExpectEvent {
    Event event{};
    unsigned times = 1;
    std::optional<Duration> within;
};
struct ExpectNoEvent {
    Duration duration{};
};
/// The application's next announcement is this.
struct ExpectAnnouncement {
    Announcement announcement{};
    std::optional<Duration> within;
};
/// An item by its id, and by its name if that is given.
struct ItemPattern {
    std::string id;
    std::optional<std::string> name;

    bool operator==(const ItemPattern&) const = default;
};
/// The list holds just these items in this order.
struct ExpectList {
    std::vector<ItemPattern> items;
};
struct ExpectCount {
    size_t count = 0;
};
struct ExpectSelection {
    std::optional<ItemPattern> item;  ///< Nothing is selected if absent.
};
/// The last reply had these items, or these bytes.
struct ExpectReply {
    std::variant<std::vector<ItemPattern>, Bytes> content;
};
/// The last call failed, with an error that contains text.
struct ExpectError {
    std::string text;
};

using Action = std::variant<SetTimeout, Note, UseMiddleware, PlanHandshake, ForgetEvents, Join,
                            Vanish, Restart, Announce, Send, WaitFor, WaitForConnection,
                            ExpectEvent, ExpectNoEvent, ExpectAnnouncement, ExpectList, ExpectCount,
                            ExpectSelection, ExpectReply, ExpectError>;

/// One line that does something.
struct Statement {
    Action action;
    size_t line = 0;   ///< From 1.
    std::string text;  ///< As it was written, without blanks and comment around it.
};

/// True for what only sets something and cannot fail.
inline bool IsSetting(const Action& action) {
    return std::holds_alternative<SetTimeout>(action) || std::holds_alternative<Note>(action) ||
           std::holds_alternative<UseMiddleware>(action) ||
           std::holds_alternative<PlanHandshake>(action) ||
           std::holds_alternative<ForgetEvents>(action);
}

}  // namespace applist::sim
