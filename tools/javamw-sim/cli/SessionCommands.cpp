// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

#include "Number.h"
#include "cli/Commands.h"
#include "feed/Feed.h"
#include "middleware/Session.h"
#include "scenario/Statement.h"

namespace applist::sim {
namespace {

constexpr const char* SERVE_DETAILS =
    "Lines on standard output, flushed at once:\n"
    "  connected APPLICATION\n"
    "  filled APPLICATION with COUNT items\n"
    "  updated APPLICATION: COUNT added, COUNT removed, COUNT renamed\n"
    "  event NUMBER NAME selection ID<TAB>NAME | none | unreadable: REASON\n"
    "  event 3 ItemClicked chose ID<TAB>NAME | none\n"
    "  event 3 ItemClicked choice unknown: REASON\n"
    "  disconnected APPLICATION\n"
    "Control bytes in ids and names are printed as \\x0a, a backslash doubled.\n"
    "With --json each is an object whose \"type\" is the first word, with \"application\" and,\n"
    "for an event, \"number\", \"name\", \"selection\" (an item or null) and \"problem\";\n"
    "filled has \"items\", updated \"added\", \"removed\" and \"renamed\".\n"
    "Without a file a built-in sample is served. Runs until SIGINT or SIGTERM.\n"
    "\n"
    "A broadcast is a transport stream with packets of 188, 192 or 204 bytes, consecutive\n"
    "sections (.sec) or applications in XML. Applications are offered if they start\n"
    "automatically or are present, are visible to viewers and are not for trials. The\n"
    "lists change with the tables: at the recorded times, or every second without a clock.\n"
    "\n"
    "A broadcast from standard input (\"-\"), a FIFO or a device is served while it arrives:\n"
    "each new table changes the lists at once, until the writer ends; then the lists stay.\n"
    "With --follow, so is a file that grows, and a FIFO waits for its next writer.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim serve\n"
    "  javamw-sim serve --items=list.txt\n"
    "  javamw-sim serve --broadcast=recording.ts\n"
    "  javamw-sim serve --broadcast=recording.ts --service=1031 --service='Rete 1'\n"
    "  javamw-sim serve --broadcast=recording.ts --language=ita,eng --all --interval=5\n"
    "  zcat recording.ts.gz | javamw-sim serve --broadcast=-\n"
    "  javamw-sim serve --follow --broadcast=growing.ts\n";

Result<Feed> ChooseFeed(const Arguments& given, const BroadcastFeedOptions& options) {
    if (given.Has("items")) {
        return TextFeed(given.Value("items"));
    }
    if (given.Has("broadcast")) {
        return BroadcastFeed(given.Value("broadcast"), options);
    }
    return SampleFeed();
}

ExitCode RunServe(const SessionOptions& session, const Arguments& given,
                  const BroadcastFeedOptions& options) {
    auto feed = ChooseFeed(given, options);
    if (!feed) {
        return Fail(feed.error(), ExitCode::WrongUsage);
    }
    // A remark names damaged parts. The rest of the feed is served.
    Complain(feed->remark);
    return Serve(session, std::move(*feed));
}

std::vector<Option> OwnOptions() {
    std::vector<Option> options = BroadcastOptions();
    options.insert(options.begin(),
                   {{"items", 'i', "FILE", "Serve the lines id<TAB>name; # begins a comment"},
                    {"broadcast", 'b', "FILE", "Serve the applications of a broadcast"}});
    options.insert(options.end(), {JsonOption(),
                                   RecordOption(),
                                   {"all", '\0', "", "Include hidden applications and trials"},
                                   {"follow", 'f', "", "Wait for more at the end of the broadcast"},
                                   {"interval", '\0', "SECONDS",
                                    "Time between changes instead of the recording's"}});
    return options;
}

// Returns the name of an option that needs --broadcast but is given without it, or an empty string.
std::string StrayOption(const Arguments& given) {
    for (const char* name : {"service", "language", "text", "all", "interval", "follow"}) {
        if (given.Has(name) && !given.Has("broadcast")) {
            return name;
        }
    }
    return {};
}

Result<double> Interval(const std::string& text) {
    const auto seconds = ParseNumber<double>(text);
    // The parser accepts inf and nan.
    return seconds && std::isfinite(*seconds) && *seconds >= 0
               ? Result(*seconds)
               : Result<double>::Failure("--interval takes seconds, not '" + text + "'");
}

Result<BroadcastFeedOptions> FeedOptionsFrom(const Arguments& given) {
    const std::string stray = StrayOption(given);
    if (!stray.empty()) {
        return Result<BroadcastFeedOptions>::Failure("--" + stray + " needs --broadcast");
    }
    auto options = BroadcastFeedOptionsFrom(given);
    if (options && given.Has("interval")) {
        const auto interval = Interval(given.Value("interval"));
        if (!interval) {
            return Result<BroadcastFeedOptions>::Failure(interval.error());
        }
        options->interval = *interval;
    }
    if (options) {
        options->filter.all = given.Has("all");
        options->follow = given.Has("follow");
    }
    return options;
}

int RunServeCommand(const Arguments& given) {
    if (given.Has("items") && given.Has("broadcast")) {
        return given.Refuse("--items and --broadcast exclude each other");
    }
    const auto session = SessionOptionsFrom(given);
    const auto options = FeedOptionsFrom(given);
    if (!session || !options) {
        return given.Refuse(FirstOf({session.error(), options.error()}));
    }
    return static_cast<int>(RunServe(*session, given, *options));
}

constexpr const char* WATCH_DETAILS =
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

int RunWatchCommand(const Arguments& given) {
    const auto session = SessionOptionsFrom(given);
    return session ? static_cast<int>(Watch(*session)) : given.Refuse(session.error());
}

// The user of a single call waits for its result.
constexpr unsigned TIMEOUT_S = 10;

constexpr const char* CALL_DETAILS =
    "The items of the reply are printed as ID<TAB>NAME, one a line. Control bytes are\n"
    "printed as \\x0a, a backslash doubled; with --json an item is an object with \"id\" and\n"
    "\"name\".\n"
    "Without --timeout the wait ends after 10 s.\n"
    "\n"
    "Examples:\n"
    "  javamw-sim call AddItems w1=Weather n1=News\n"
    "  javamw-sim call GetAllItems --json\n"
    "  javamw-sim call SetSelection n1\n";

std::string CallDetails() {
    std::string text = "Functions:\n";
    for (const Function function : FUNCTIONS) {
        text += "  " + std::string(NameOf(function)) + ' ' + ArgumentForm(function);
        // A function without arguments would leave a space at the end of its line.
        text.erase(text.find_last_not_of(' ') + 1);
        text += '\n';
    }
    return text + '\n' + CALL_DETAILS;
}

int RunCallCommand(const Arguments& given) {
    auto session = SessionOptionsFrom(given);
    if (!session) {
        return given.Refuse(session.error());
    }
    session->timeout = session->timeout.value_or(TIMEOUT_S);
    const std::string& name = given.words().front();
    const auto function = FunctionByName(name);
    if (!function) {
        return given.Refuse("unknown function '" + name + "'" +
                            tools::Suggestion(name, FunctionNames()));
    }
    const auto items =
        ParseCallArguments(*function, {given.words().begin() + 1, given.words().end()});
    if (!items) {
        return given.Refuse(items.error());
    }
    return static_cast<int>(CallOnce(*session, {*function, *items}));
}

}  // namespace

std::vector<std::string> FunctionNames() {
    std::vector<std::string> names;
    std::ranges::transform(FUNCTIONS, std::back_inserter(names),
                           [](Function function) { return std::string(NameOf(function)); });
    return names;
}

std::vector<Command> SessionCommands() {
    return {{"serve", "", "Fill the list of each application that connects, then watch",
             SessionOptionsAnd(OwnOptions()), SERVE_DETAILS, &RunServeCommand},
            {"watch", "", "Print every event and the selection read after it",
             SessionOptionsAnd({JsonOption(), RecordOption()}), WATCH_DETAILS, &RunWatchCommand},
            {"call", "FUNCTION [ARG...]", "Call one function and print the items of the reply",
             SessionOptionsAnd({JsonOption(), RecordOption()}), CallDetails(), &RunCallCommand}};
}

}  // namespace applist::sim
