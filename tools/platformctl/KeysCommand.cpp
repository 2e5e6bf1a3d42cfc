// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include <nlohmann/json.hpp>

#include "Commands.h"
#include "data/KeyTable.h"
#include "data/SettingsPaths.h"
#include "shared/Json.h"

namespace applist::desktop {
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

}  // namespace applist::desktop
