// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/Program.h"

#include "cli/CommonOptions.h"

namespace applist::sim {
namespace {

constexpr const char* PURPOSE =
    "Simulates the broadcast middleware on the bus: fills the list of the application,\n"
    "calls it and prints its events. Either of the two may start first.\n";

constexpr const char* EXIT_CODES =
    "Exit status:\n"
    "  0  success; an endless command was ended by SIGINT or SIGTERM\n"
    "  1  failure: a call failed, an expectation did not hold, a comparison found a\n"
    "     difference, the command was interrupted, or the output was closed\n"
    "  2  wrong usage, or an input file that cannot be used\n"
    "  3  the bus cannot be reached, closed the connection, or denies this user the\n"
    "     middleware's names\n"
    "  4  no application appeared in time\n";

}  // namespace

}  // namespace applist::sim

namespace applist::tools {

const Program& TheProgram() {
    static const Program PROGRAM{
        .name = "javamw-sim",
        .version = APPLIST_VERSION,
        .purpose = sim::PURPOSE,
        .options = {},
        .commands = {sim::ServeCommand(), sim::WatchCommand(), sim::CallCommand(),
                     sim::RunCommand(), sim::ShellCommand(), sim::ApplicationsCommand(),
                     sim::RecordCommand(), sim::ReplayCommand(), sim::CompareCommand()},
        .exitCodes = sim::EXIT_CODES,
        .values = {{"FILE", {}},
                   {"FIRST", {}},
                   {"SECOND", {}},
                   {"FUNCTION", sim::FunctionNames()},
                   {"CODING", sim::TextCodingNames()}}};
    return PROGRAM;
}

}  // namespace applist::tools
