// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/AppControlDirect.h"

#include <string>
#include <vector>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "Log.h"
#include "launch/LaunchProtocol.h"
#include "paths/DataPath.h"

namespace applist::desktop {
namespace {

// The first word of a desktop entry's command line, which may be quoted.
std::string FirstWord(const char* commandLine) {
    g_auto(GStrv) words = nullptr;
    const bool parsed =
        commandLine != nullptr && g_shell_parse_argv(commandLine, nullptr, &words, nullptr) != 0;
    return parsed ? words[0] : "";
}

// The program that the application's desktop entry names; empty when there is no entry, or none
// whose program exists.
std::string ProgramOf(const std::string& appId) {
    const std::string entry = appId + ".desktop";
    const std::string ours = FindData("applications/" + entry);
    g_autoptr(GDesktopAppInfo) info = ours.empty()
                                          ? g_desktop_app_info_new(entry.c_str())
                                          : g_desktop_app_info_new_from_filename(ours.c_str());
    return info != nullptr ? FirstWord(g_app_info_get_commandline(G_APP_INFO(info))) : "";
}

}  // namespace

bool LaunchDirectly(const app_control_s& request) {
    std::vector<std::string> command = ToArguments(request);
    command.insert(command.begin(), ProgramOf(request.appId));
    if (command.front().empty()) {
        LOG_ERROR("Cannot launch %s: no such application is installed", request.appId.c_str());
        return false;
    }
    std::vector<char*> argv;
    argv.reserve(command.size() + 1);
    for (std::string& argument : command) {
        argv.push_back(argument.data());
    }
    argv.push_back(nullptr);
    g_autoptr(GError) error = nullptr;
    if (g_spawn_async(nullptr, argv.data(), nullptr, G_SPAWN_SEARCH_PATH, nullptr, nullptr, nullptr,
                      &error) == FALSE) {
        LOG_ERROR("Cannot start %s: [%d] %s", argv[0], error->code, error->message);
        return false;
    }
    return true;
}

}  // namespace applist::desktop
