// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/ProgramOptions.h"

#include <cstdio>
#include <string_view>

#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

void PrintHelp(const char* name) {
    std::printf(
        "Usage: %s [%s KEY=VALUE...]\n\n"
        "The program is controlled by keys and over D-Bus. See man %s.\n\n"
        "  %s KEY=VALUE  pass extra data to the program, as a launch request does\n"
        "  --prepare          load everything and wait for a launch; only on its own\n"
        "  --version          print the version and stop\n"
        "  --help             print this text and stop\n\n"
        "Environment: APPLIST_LOCK (off), APPLIST_LOG (error, info or debug),\n"
        "APPLIST_PLATFORM_ROOT, DBUS_SYSTEM_BUS_ADDRESS.\n",
        name, EXTRA_ARGUMENT, name, EXTRA_ARGUMENT);
}

}  // namespace

bool AnswerOptions(int argc, const char* const* argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == EXTRA_ARGUMENT) {
            // Its value may have any text.
            ++i;
            continue;
        }
        const std::string_view path = argv[0];
        // data() is null-terminated here, because the view extends to the end of argv[0].
        const char* name = path.substr(path.find_last_of('/') + 1).data();
        if (argument == "--help" || argument == "-h") {
            PrintHelp(name);
            return true;
        }
        if (argument == "--version") {
            std::printf("%s %s\n", name, APPLIST_VERSION);
            return true;
        }
    }
    return false;
}

}  // namespace applist::desktop
