// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/AppControlDirect.h"

#include <string>
#include <vector>

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>

#include "Log.h"
#include "data/ProgramFiles.h"
#include "launch/LaunchProtocol.h"

namespace applist::desktop {
namespace {

using Command = std::vector<std::string>;

// Desktop entries use field codes such as "%U" as placeholders for files to open.
bool IsFieldCode(const std::string& word) {
    return word.size() == 2 && word[0] == '%' && word[1] != '%';
}

// Splits a desktop entry's command line, which may contain quotes, and drops the field codes. Empty
// if the command line is missing or malformed.
Command Words(const char* commandLine) {
    g_auto(GStrv) words = nullptr;
    if (commandLine == nullptr || g_shell_parse_argv(commandLine, nullptr, &words, nullptr) == 0) {
        return {};
    }
    Command command(words, words + g_strv_length(words));
    std::erase_if(command, IsFieldCode);
    return command;
}

// Returns the command of the application's desktop entry. Empty if there is no such entry or its
// program does not exist.
Command CommandOf(const std::string& appId) {
    const std::string entry = appId + ".desktop";
    const std::string ours = FindData("applications/" + entry);
    g_autoptr(GDesktopAppInfo) info = ours.empty()
                                          ? g_desktop_app_info_new(entry.c_str())
                                          : g_desktop_app_info_new_from_filename(ours.c_str());
    return info != nullptr ? Words(g_app_info_get_commandline(G_APP_INFO(info))) : Command();
}

}  // namespace

bool LaunchDirectly(const app_control_s& request) {
    Command command = CommandOf(request.appId);
    if (command.empty()) {
        LOG_ERROR("Cannot launch %s: no such application is installed", request.appId.c_str());
        return false;
    }
    const Command extra = ToArguments(request);
    command.insert(command.end(), extra.begin(), extra.end());
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
