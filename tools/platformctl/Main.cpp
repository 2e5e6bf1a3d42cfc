// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <cstdio>

#include "CommandLine.h"
#include "Commands.h"

namespace applist::desktop {
namespace {

constexpr size_t ANY_NUMBER = ~size_t{0};

struct Command {
    /// The words of its name.
    std::vector<std::string> name;
    const char* arguments;
    size_t least;
    size_t most;
    Exit (*run)(const Request&);
    const char* purpose;
};

const std::array<Command, 11>& Commands() {
    static const std::array<Command, 11> commands{{
        {{"get"}, "KEY", 1, 1, GetSetting, "print a setting"},
        {{"set"}, "KEY bool|int VALUE", 3, 3, SetSetting, "store a setting"},
        {{"unset"}, "KEY", 1, 1, UnsetSetting, "remove a setting"},
        {{"list"}, "", 0, 0, ListData, "print all settings and factory items"},
        {{"keys"}, "", 0, 0, ListKeys, "print which keys are the remote control's"},
        {{"factory", "get"}, "ID", 1, 1, GetFactoryItem, "print a factory item"},
        {{"factory", "set"}, "ID VALUE", 2, 2, SetFactoryItem, "store a factory item"},
        {{"factory", "unset"}, "ID", 1, 1, UnsetFactoryItem, "remove a factory item"},
        {{"region"},
         "italy|brazil|argentina|uruguay|none",
         1,
         1,
         SetRegion,
         "store the region of the set"},
        {{"visible"}, "", 0, 0, PrintVisible, "print whether data services are offered, and why"},
        {{"launch"}, "APP_ID [KEY=VALUE...]", 1, ANY_NUMBER, Launch, "launch an application"},
    }};
    return commands;
}

std::string Joined(const std::vector<std::string>& words) {
    std::string line;
    for (const std::string& word : words) {
        line += (line.empty() ? "" : " ") + word;
    }
    return line;
}

std::string Usage(const Command& command) {
    const std::string name = Joined(command.name);
    return *command.arguments == '\0' ? name : name + " " + command.arguments;
}

void PrintHelp() {
    std::puts(
        "Usage: platformctl [--json] COMMAND [ARGUMENT...]\n\n"
        "Replaces the menus and factory tools of a television set on a desktop.\n");
    for (const Command& command : Commands()) {
        std::printf("  %-43s %s\n", Usage(command).c_str(), command.purpose);
    }
    std::puts(
        "\n  --json      print data as JSON\n"
        "  --version   print the version and stop\n"
        "  --help      print this text and stop\n\n"
        "Data lives under $APPLIST_PLATFORM_ROOT, else in the user's own folders.\n\n"
        "Exit status: 0 success, 1 failure (a value that is not set, a damaged\n"
        "file, an application that is not installed), 2 wrong usage; nothing was written.");
}

const Command* Find(const std::vector<std::string>& words) {
    const auto& commands = Commands();
    const auto* const found =
        std::find_if(commands.begin(), commands.end(), [&](const Command& command) {
            return command.name.size() <= words.size() &&
                   std::equal(command.name.begin(), command.name.end(), words.begin());
        });
    return found != commands.end() ? found : nullptr;
}

Exit Run(const CommandLine& line) {
    const Command* command = Find(line.words);
    if (command == nullptr) {
        return Complain("unknown command '" + Joined(line.words) + "'; see --help", WRONG_USAGE);
    }
    const auto first = line.words.begin() + static_cast<std::ptrdiff_t>(command->name.size());
    const Request request{{first, line.words.end()}, line.json};
    // Checked here, because the commands access their arguments by index.
    const size_t count = request.arguments.size();
    if (count < command->least || count > command->most) {
        return Complain("usage: platformctl " + Usage(*command), WRONG_USAGE);
    }
    return command->run(request);
}

Exit Main(const std::vector<std::string>& arguments) {
    const CommandLine line = ParseCommandLine(arguments);
    if (line.help) {
        PrintHelp();
        return DONE;
    }
    if (line.version) {
        std::puts("platformctl " APPLIST_VERSION);
        return DONE;
    }
    if (!line.unknownOption.empty()) {
        return Complain("unknown option '" + line.unknownOption + "'; see --help", WRONG_USAGE);
    }
    if (line.words.empty()) {
        return Complain("no command; see --help", WRONG_USAGE);
    }
    return Run(line);
}

}  // namespace
}  // namespace applist::desktop

int main(int argc, char** argv) {
    return applist::desktop::Main({argv + std::min(argc, 1), argv + argc});
}
