// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "shell/Shell.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Each line is a statement of the scenario language and runs at once. Events are\n"
    "printed above the line being typed. Further commands:\n"
    "  help [STATEMENT]         list the statements\n"
    "  busctl [STATEMENT]       print busctl lines that do the same as STATEMENT, or as\n"
    "                           the last statement\n"
    "  quit                     end; Ctrl-D does the same\n"
    "Tab completes keywords and the ids of known items; the arrow keys and\n"
    "Ctrl-R find earlier lines, which are kept in $XDG_STATE_HOME/javamw-sim/history.\n"
    "Ctrl-C ends the running statement, drops the line being typed, or ends the shell.\n"
    "\n"
    "Input from a pipe ends at the first line that fails; the error names the line.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim shell\n"
    "  printf 'wait connected\\nadd w1=Weather\\ncall GetAllItems\\n' | javamw-sim shell\n";

int Run(const Arguments& given) {
    return static_cast<int>(
        Shell({given.Value("address"), given.Has("offline"), given.Has("json")}).Run());
}

}  // namespace

Command ShellCommand() {
    return {"shell",
            "",
            "Run statements interactively",
            {AddressOption(),
             {"offline", '\0', "", "Join the bus only when a statement needs it"},
             JsonOption()},
            DETAILS,
            &Run};
}

}  // namespace applist::sim
