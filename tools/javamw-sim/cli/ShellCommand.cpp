// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonOptions.h"
#include "cli/Subcommand.h"
#include "shell/Shell.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Each line is a statement of the language of scenarios, done at once. Events are\n"
    "printed as they come, above the line being typed. Besides statements:\n"
    "  help [STATEMENT]         what can be typed\n"
    "  busctl [STATEMENT]       the busctl lines that do the same as STATEMENT, or as the\n"
    "                           last one\n"
    "  quit                     end; so does Ctrl-D\n"
    "Tab completes keywords and the ids of items that were seen; the arrow keys and\n"
    "Ctrl-R find earlier lines, which are kept in $XDG_STATE_HOME/javamw-sim/history.\n"
    "Ctrl-C ends a statement under way, drops the line being typed, or ends the shell.\n"
    "\n"
    "Lines from a pipe end at the first that fails, named on standard error.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim shell\n"
    "  printf 'wait connected\\nadd w1=Weather\\ncall GetAllItems\\n' | javamw-sim shell\n";

Result<Job> Prepare(const Arguments& given) {
    const ShellOptions options{given.Value("address"), given.Has("offline"), given.Has("json")};
    return Job([options] { return Shell(options).Run(); });
}

}  // namespace

Subcommand ShellSubcommand() {
    return {"shell",
            "",
            "Do what is typed, statement by statement",
            {AddressOption(),
             {"offline", '\0', "", "Join the bus only when a statement needs it"},
             JsonOption()},
            DETAILS,
            &Prepare};
}

}  // namespace applist::sim
