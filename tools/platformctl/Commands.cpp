// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"

#include <cstdio>

#include "Known.h"
#include "PlatformSettings.h"

namespace applist::desktop {
namespace {

constexpr const char* PURPOSE =
    "Replaces the menus and factory tools of a television set on a desktop. Data lives\n"
    "under $APPLIST_PLATFORM_ROOT, else in the user's own folders.\n";

constexpr const char* EXIT_CODES =
    "Exit status:\n"
    "  0  success\n"
    "  1  failure: a value that is not set, a damaged file, an application that is not\n"
    "     installed\n"
    "  2  wrong usage; nothing was written\n";

std::vector<tools::Command> Table() {
    return {
        {"get", "KEY", "Print a setting", {}, "", GetSetting},
        {"set", "KEY bool|int VALUE", "Store a setting", {}, "", SetSetting},
        {"unset", "KEY", "Remove a setting", {}, "", UnsetSetting},
        {"list", "", "Print all settings and factory items", {}, "", ListData},
        {"keys", "", "Print which keys are the remote control's", {}, "", ListKeys},
        {"factory get", "ID", "Print a factory item", {}, "", GetFactoryItem},
        {"factory set", "ID VALUE", "Store a factory item", {}, "", SetFactoryItem},
        {"factory unset", "ID", "Remove a factory item", {}, "", UnsetFactoryItem},
        {"region", RegionNames("|"), "Store the region of the set", {}, "", SetRegion},
        {"visible", "", "Print whether data services are offered, and why", {}, "", PrintVisible},
        {"launch", "APP_ID [KEY=VALUE...]", "Launch an application", {}, "", Launch},
    };
}

std::vector<std::string> Keys() {
    std::vector<std::string> keys;
    for (const KnownSetting& setting : KnownSettings()) {
        keys.push_back(setting.key);
    }
    return keys;
}

}  // namespace

Exit Complain(const std::string& problem, Exit status) {
    static_cast<void>(std::fprintf(stderr, "platformctl: %s\n", problem.c_str()));
    return status;
}

Exit Print(const std::string& text) {
    // Flushed here, so that a full disk or a closed pipe shows in the exit status.
    return std::fputs(text.c_str(), stdout) >= 0 && std::fflush(stdout) == 0 ? DONE : FAILED;
}

}  // namespace applist::desktop

namespace applist::tools {

const Program& TheProgram() {
    static const Program PROGRAM{
        .name = "platformctl",
        .version = APPLIST_VERSION,
        .purpose = desktop::PURPOSE,
        .options = {{"json", '\0', "", "Print data as JSON"}},
        .commands = desktop::Table(),
        .exitCodes = desktop::EXIT_CODES,
        .values = {{"KEY", desktop::Keys()}, {"ID", {std::to_string(ID_LOCALSET)}}}};
    return PROGRAM;
}

}  // namespace applist::tools
