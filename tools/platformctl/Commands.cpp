// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"

#include <cstdio>
#include <memory>
#include <utility>

#include <nlohmann/json.hpp>

#include "Known.h"
#include "PlatformSettings.h"
#include "Result.h"
#include "app_control.h"
#include "data/FilePaths.h"
#include "data/KeyTable.h"
#include "shared/Output.h"

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
    return tools::Write(text) ? DONE : FAILED;
}

namespace {

void PrintText(const KeyTable& table) {
    for (const auto& [key, name] : table.All()) {
        std::printf("%s\t%s\n", key.c_str(), name);
    }
}

void PrintJson(const KeyTable& table) {
    tools::Json keys = tools::Json::array();
    for (const auto& [key, name] : table.All()) {
        keys.push_back({{"key", key}, {"name", name}});
    }
    static_cast<void>(Print(tools::JsonText({{"keys", keys}})));
}

}  // namespace

int ListKeys(const Arguments& given) {
    const KeyTableReading reading = ReadKeyTable(KeyTablePath());
    (given.Has("json") ? PrintJson : PrintText)(reading.table);
    // The keys are printed despite problems, because the other lines of the file take effect.
    for (const std::string& problem : reading.problems) {
        Complain(problem, FAILED);
    }
    return reading.problems.empty() ? DONE : FAILED;
}

namespace {

using Pair = std::pair<std::string, std::string>;

struct Destroy {
    void operator()(app_control_h request) const { app_control_destroy(request); }
};
using LaunchRequest = std::unique_ptr<app_control_s, Destroy>;

/// Parses KEY=VALUE. The value may be empty and may contain '='.
Result<Pair> ParsePair(const std::string& word) {
    const size_t sign = word.find('=');
    if (sign == std::string::npos || sign == 0) {
        return Result<Pair>::Failure("extra data '" + word + "' is not KEY=VALUE");
    }
    return Pair(word.substr(0, sign), word.substr(sign + 1));
}

bool Fill(app_control_h request, const std::string& id, const std::vector<Pair>& data) {
    for (const auto& [key, value] : data) {
        if (app_control_add_extra_data(request, key.c_str(), value.c_str()) !=
            APP_CONTROL_ERROR_NONE) {
            return false;
        }
    }
    return app_control_set_app_id(request, id.c_str()) == APP_CONTROL_ERROR_NONE;
}

bool Send(const std::string& id, const std::vector<Pair>& data) {
    app_control_h handle = nullptr;
    if (app_control_create(&handle) != APP_CONTROL_ERROR_NONE) {
        return false;
    }
    const LaunchRequest request(handle);
    // Without a reply callback, because the return value reports whether the launch was accepted.
    return Fill(handle, id, data) &&
           app_control_send_launch_request(handle, nullptr, nullptr) == APP_CONTROL_ERROR_NONE;
}

}  // namespace

int Launch(const Arguments& given) {
    const std::string& id = given.words()[0];
    std::vector<Pair> data;
    for (size_t i = 1; i < given.words().size(); ++i) {
        auto pair = ParsePair(given.words()[i]);
        if (!pair) {
            return Complain(pair.error(), WRONG_USAGE);
        }
        data.push_back(std::move(*pair));
    }
    return Send(id, data) ? DONE : Complain("application '" + id + "' was not launched", FAILED);
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
