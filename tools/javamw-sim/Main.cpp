// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "CommandLine.h"
#include "Output.h"
#include "commands/CallOnce.h"
#include "commands/Serve.h"
#include "commands/Watch.h"
#include "feed/ItemSource.h"

namespace applist::sim {
namespace {

Result<Feed> ChooseFeed(const CommandLine& line) {
    if (!line.itemsFile.empty()) {
        return TextFeed(line.itemsFile);
    }
    if (!line.broadcastFile.empty()) {
        return BroadcastFeed(line.broadcastFile);
    }
    return SampleFeed();
}

ExitCode RunServe(const CommandLine& line) {
    auto feed = ChooseFeed(line);
    if (!feed) {
        Complain(feed.error());
        return ExitCode::WrongUsage;
    }
    if (!feed->remark.empty()) {
        Complain(feed->remark);
    }
    return Serve(line.session, std::move(feed->items)).Run();
}

ExitCode PrintText(const std::string& text) {
    return WriteLine(text) ? ExitCode::Success : ExitCode::CallFailed;
}

ExitCode Run(const std::vector<std::string>& arguments) {
    const auto line = ParseCommandLine(arguments);
    if (!line) {
        Complain(line.error());
        return ExitCode::WrongUsage;
    }
    switch (line->command) {
        case Command::Help:
            return PrintText(line->help);
        case Command::Version:
            return PrintText("javamw-sim " APPLIST_VERSION);
        case Command::Serve:
            return RunServe(*line);
        case Command::Call:
            return CallOnce(line->session, line->function, line->arguments).Run();
        case Command::Watch:
            return Watch(line->session).Run();
    }
    return ExitCode::WrongUsage;
}

}  // namespace
}  // namespace applist::sim

int main(int argc, char** argv) {
    return static_cast<int>(applist::sim::Run({argv, argv + argc}));
}
