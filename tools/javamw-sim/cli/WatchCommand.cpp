// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "middleware/Tasks.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Lines on standard output, flushed at once:\n"
    "  connected APPLICATION\n"
    "  event NUMBER NAME selection ID<TAB>NAME | none | unreadable: REASON\n"
    "  event 3 ItemClicked chose ID<TAB>NAME | none\n"
    "  event 3 ItemClicked choice unknown: REASON\n"
    "  disconnected APPLICATION\n"
    "Control bytes in ids and names are printed as \\x0a, a backslash doubled.\n"
    "With --json each is an object whose \"type\" is the first word, with \"application\" and,\n"
    "for an event, \"number\", \"name\", \"selection\" (an item or null) and \"problem\".\n"
    "Runs until SIGINT or SIGTERM.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim watch\n"
    "  javamw-sim watch --address=unix:path=/run/set/system_bus_socket\n";

int Run(const Arguments& given) {
    const auto session = SessionOptionsFrom(given);
    return session ? static_cast<int>(Watch(*session)) : given.Refuse(session.error());
}

}  // namespace

Command WatchCommand() {
    return {"watch",
            "",
            "Print every event and the selection read after it",
            SessionOptionsAnd({JsonOption(), RecordOption()}),
            DETAILS,
            &Run};
}

}  // namespace applist::sim
