// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What a program of this port does before its own main().
#include <cstdio>
#include <string_view>
#include <vector>

#include "CallbackGuard.h"
#include "app/Lifecycle.h"
#include "app/PreparedProcess.h"
#include "launch/LaunchProtocol.h"
#include "log/LogWriter.h"

// The linker's option --wrap=main calls the second one in place of the program's main(), the first.
// NOLINTBEGIN(bugprone-reserved-identifier): the linker defines these names
extern "C" int __real_main(int argc, char** argv);
extern "C" int __wrap_main(int argc, char** argv);
// NOLINTEND(bugprone-reserved-identifier)

namespace applist::desktop {
namespace {

constexpr std::string_view PREPARE_OPTION = "--prepare";

void PrintHelp(const char* name) {
    std::printf(
        "Usage: %s [%s KEY=VALUE...]\n\n"
        "The program is controlled by keys and over D-Bus. See man %s.\n\n"
        "  %s KEY=VALUE  pass extra data to the program, as a launch request does\n"
        "  --prepare          load everything and wait for a launch; only on its own\n"
        "  --version          print the version and stop\n"
        "  --help             print this text and stop\n\n"
        "Other arguments are ignored, because a launcher may add its own.\n\n"
        "Environment: APPLIST_LOCK (off), APPLIST_LOG (error, info or debug),\n"
        "APPLIST_PLATFORM_ROOT, DBUS_SYSTEM_BUS_ADDRESS.\n",
        name, EXTRA_ARGUMENT, name, EXTRA_ARGUMENT);
}

// Answers --help (-h) and --version, the options that every program of this port has, on standard
// output. Returns true if one of them was given; the program then ends without starting. Other
// arguments are ignored.
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

int AnswerOrRun(int argc, char** argv) {
    return AnswerOptions(argc, argv) ? Lifecycle::ENDED : __real_main(argc, argv);
}

}  // namespace
}  // namespace applist::desktop

int __wrap_main(int argc, char** argv) {  // NOLINT(bugprone-reserved-identifier)
    using namespace applist::desktop;
    if (argc != 2 || argv[1] != PREPARE_OPTION) {
        return AnswerOrRun(argc, argv);
    }
    return applist::GuardCallback<int>(Lifecycle::FAILED, [&]() -> int {
        TakeGlibMessages();
        PreparedProcess process(ApplicationIdOf(argv[0]));
        if (!process.Prepare(argc, argv)) {
            return Lifecycle::FAILED;
        }
        if (!process.AwaitRequest()) {
            return Lifecycle::ENDED;
        }
        std::vector<char*>& arguments = process.arguments();
        return AnswerOrRun(static_cast<int>(arguments.size()) - 1, arguments.data());
    });
}
