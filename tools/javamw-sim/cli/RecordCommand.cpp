// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "cli/CommonOptions.h"
#include "cli/Subcommand.h"
#include "middleware/BusRecording.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Looks on and takes no part: a middleware of any make and the application may start\n"
    "and end as they like. A bus lets only its owner and root look on; to record what\n"
    "this program itself says and hears, use --record of serve, watch or call.\n"
    "\n"
    "FILE holds a JSON object per line; \"-\" is standard output. The first line names\n"
    "the version of the form, every other is a message:\n"
    "  us     microseconds since the recording began\n"
    "  kind   acquired, released (a name of the handshake), call, reply, error,\n"
    "         signal, or left (the bus)\n"
    "  side   application or middleware: whose doing it is\n"
    "  from   its unique bus name; to: whom it is meant for, if one\n"
    "  call   the number of the call; an answer has that of its call\n"
    "  name   the bus name, or the error's name; text: the error's text\n"
    "  bytes  the content, hexadecimal\n"
    "  note   what it says, for people; not read back\n"
    "Members that are empty are left out. Runs until SIGINT or SIGTERM.\n"
    "\n"
    "Examples:\n"
    "  sudo javamw-sim record session.jsonl\n"
    "  javamw-sim serve --record=session.jsonl\n"
    "  javamw-sim record - | jq -r .note\n";

Result<Job> Prepare(const Arguments& given) {
    if (given.words().size() != 1) {
        return Result<Job>::Failure("record takes FILE");
    }
    return Job([address = given.Value("address"), file = given.words().front()] {
        return BusRecording(address, file).Run();
    });
}

}  // namespace

Subcommand RecordSubcommand() {
    return {"record",
            "FILE",
            "Write down what a middleware and the application say to each other",
            {AddressOption()},
            DETAILS,
            &Prepare};
}

}  // namespace applist::sim
