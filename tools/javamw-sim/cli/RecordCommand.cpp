// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonOptions.h"
#include "cli/Program.h"
#include "middleware/Tasks.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Only observes: any middleware and the application may start and end at any time. A\n"
    "bus allows this only to its owner and to root. To record the traffic of this\n"
    "program itself, use --record of serve, watch or call.\n"
    "\n"
    "FILE contains a JSON object per line; \"-\" is standard output. The first line names\n"
    "the version of the format, every other line is a message:\n"
    "  us     microseconds since the recording began\n"
    "  kind   acquired, released (a name of the handshake), call, reply, error,\n"
    "         signal, or left (the bus)\n"
    "  side   application or middleware, which caused it\n"
    "  from   its unique bus name; to: the receiver, if there is one\n"
    "  call   the number of the call; a reply has that of its call\n"
    "  name   the bus name or the name of the error; text: the text of the error\n"
    "  bytes  the payload, hexadecimal\n"
    "  note   a description for people; ignored when read\n"
    "Empty members are omitted. Runs until SIGINT or SIGTERM.\n"
    "\n"
    "Examples:\n"
    "  sudo javamw-sim record session.jsonl\n"
    "  javamw-sim serve --record=session.jsonl\n"
    "  javamw-sim record - | jq -r .note\n";

int Run(const Arguments& given) {
    return static_cast<int>(RecordBus(given.Value("address"), given.words().front()));
}

}  // namespace

Command RecordCommand() {
    return {
        "record",          "FILE",  "Record the traffic between a middleware and the application",
        {AddressOption()}, DETAILS, &Run};
}

}  // namespace applist::sim
