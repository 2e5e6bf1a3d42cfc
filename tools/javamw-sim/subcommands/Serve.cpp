// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "commands/Serve.h"

#include <utility>

#include "Output.h"
#include "feed/ItemSource.h"
#include "subcommands/SessionArguments.h"
#include "subcommands/Subcommands.h"

namespace applist::sim {
namespace {

constexpr const char* DETAILS =
    "Lines on standard output, complete as soon as they are true:\n"
    "  connected APPLICATION\n"
    "  filled APPLICATION with COUNT items\n"
    "  event NUMBER NAME selection ID<TAB>NAME | none | unreadable: REASON\n"
    "  disconnected APPLICATION\n"
    "Control bytes in ids and names are printed as \\x0a, a backslash twice.\n"
    "With --json each is an object whose \"type\" is the first word, with \"application\" and,\n"
    "for an event, \"number\", \"name\", \"selection\" (an item or null) and \"problem\".\n"
    "Without a file a built-in sample is served. Runs until SIGINT or SIGTERM.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim serve\n"
    "  javamw-sim serve --items=list.txt\n"
    "  javamw-sim serve --broadcast=recording.ts\n";

Result<Feed> ChooseFeed(const Arguments& given) {
    if (given.Has("items")) {
        return TextFeed(given.Value("items"));
    }
    if (given.Has("broadcast")) {
        return BroadcastFeed(given.Value("broadcast"));
    }
    return SampleFeed();
}

ExitCode RunServe(const SessionOptions& session, const Arguments& given) {
    auto feed = ChooseFeed(given);
    if (!feed) {
        Complain(feed.error());
        return ExitCode::WrongUsage;
    }
    if (!feed->remark.empty()) {
        Complain(feed->remark);
    }
    return Serve(session, std::move(feed->items)).Run();
}

Result<Job> Prepare(const Arguments& given) {
    const auto session = SessionOptionsFrom(given);
    if (!session) {
        return Result<Job>::Failure(session.error());
    }
    if (given.Has("items") && given.Has("broadcast")) {
        return Result<Job>::Failure("--items and --broadcast exclude each other");
    }
    return Job([session = *session, given] { return RunServe(session, given); });
}

}  // namespace

Subcommand ServeSubcommand() {
    return {
        "serve",
        "",
        "Fill the list of each application that comes, then watch",
        SessionOptionsAnd({{"items", 'i', "FILE", "Lines id<TAB>name, # begins a comment"},
                           {"broadcast", 'b', "FILE", "What a recorded transport stream offers"},
                           JsonOption(),
                           RecordOption()}),
        DETAILS,
        &Prepare};
}

}  // namespace applist::sim
