// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>
#include <optional>

#include "broadcast/BroadcastReader.h"
#include "cli/ApplicationList.h"
#include "cli/Commands.h"
#include "middleware/MainLoop.h"
#include "shared/Output.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "FILE is a transport stream with packets of 188, 192 or 204 bytes, consecutive\n"
    "sections (.sec) or applications in XML; \"-\" is standard input. It is read to its end,\n"
    "a pipe until its writer ends or Ctrl-C (SIGINT). Every application is listed once for\n"
    "each service, offered to viewers or not, as in its last version. Damaged parts are\n"
    "skipped; standard error has the first ten places and the number of each kind.\n"
    "\n"
    "Columns, keys of --json and header of --csv:\n"
    "  service, organisation_id, application_id, type, control, visibility, priority,\n"
    "  name, names (by language), location, profiles (number/version), service_bound,\n"
    "  usage, boundaries, ratings (by country), transports; with --why: why\n"
    "Visibility is 3 for viewers, 1 for other applications only, 0 for none. Type 1 is\n"
    "DVB-J, 16 HbbTV. An absent value is - , null or empty.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim applications recording.ts\n"
    "  javamw-sim applications --service='Rete 1' --language=ita recording.ts\n"
    "  javamw-sim applications --json recording.ts | jq '.[].name'\n"
    "  javamw-sim applications --csv ait.xml >applications.csv\n"
    "  zcat recording.ts.gz | javamw-sim applications -\n";

using Format = std::string (*)(const std::vector<ListedApplication>&, bool why);

ExitCode PrintApplications(const std::string& file, const BroadcastFeedOptions& options,
                           Format format, bool why) {
    // Handles SIGINT, so that a user can end a pipe. Created after the file was opened, because
    // opening a FIFO waits for a writer.
    std::optional<MainLoop> loop;
    const auto broadcast = ReadBroadcastFile(file, options.coding, [&](int descriptor) {
        if (!loop) {
            loop.emplace().OnSignal(SIGINT, [&loop] { loop->End(ExitCode::Success); });
        }
        bool readable = false;
        const Registration ready =
            WhenReadable(descriptor, [&readable](GIOCondition) { readable = true; });
        RunUntil([&] { return readable || loop->exitCode(); });
        return !loop->exitCode();
    });
    loop.reset();
    const std::string missing =
        broadcast ? MissingService(*broadcast, options.filter) : std::string();
    if (!broadcast || !missing.empty()) {
        return Fail(broadcast ? file + ": " + missing : broadcast.error(), ExitCode::WrongUsage);
    }
    // A damaged recording still yields applications, so this is not a failure.
    Complain(DamageRemark(file, broadcast->damage));
    return tools::Write(format(ListApplications(*broadcast, options.filter), why))
               ? ExitCode::Success
               : ExitCode::CallFailed;
}

int Run(const Arguments& given) {
    if (given.Has("json") && given.Has("csv")) {
        return given.Refuse("--json and --csv exclude each other");
    }
    const auto options = BroadcastFeedOptionsFrom(given);
    if (!options) {
        return given.Refuse(options.error());
    }
    const Format format = given.Has("json")  ? &FormatJson
                          : given.Has("csv") ? &FormatCsv
                                             : &FormatTable;
    return static_cast<int>(
        PrintApplications(given.words().front(), *options, format, given.Has("why")));
}

}  // namespace

Command ApplicationsCommand() {
    std::vector<Option> options = BroadcastOptions();
    options.push_back({"json", 'j', "", "Print an array of objects"});
    options.push_back({"why", '\0', "", "Also print why each application is offered or not"});
    options.push_back({"csv", '\0', "", "Print comma-separated values (RFC 4180)"});
    return {"applications",     "FILE",  "Print the applications in a recorded broadcast",
            std::move(options), DETAILS, &Run};
}

}  // namespace applist::sim
