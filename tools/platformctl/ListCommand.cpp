// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>
#include <vector>

#include "Commands.h"
#include "Json.h"
#include "Known.h"
#include "PlatformSettings.h"

namespace applist::desktop {
namespace {

struct Entry {
    std::string name;
    std::string type;
    Reading<Setting> reading;
};

std::vector<Entry> ReadAll() {
    std::vector<Entry> entries;
    for (const KnownSetting& known : KnownSettings()) {
        entries.push_back({known.key, TypeName(known.type), ReadKnownSetting(known)});
    }
    entries.push_back({"factory " + std::to_string(ID_LOCALSET), "int", ReadRegionItem()});
    return entries;
}

void PrintText(const std::vector<Entry>& entries) {
    for (const auto& [name, type, reading] : entries) {
        std::printf("%s\t%s\t%s\n", name.c_str(), type.c_str(), ValueText(reading).c_str());
    }
}

void PrintJson(const std::vector<Entry>& entries) {
    Json json;
    json.Object().Array("data");
    for (const auto& [name, type, reading] : entries) {
        json.Object()
            .Member("name", name)
            .Member("type", type)
            .Member("value", reading.value)
            .EndObject();
    }
    json.EndArray().EndObject().Print();
}

}  // namespace

int ListData(const Arguments& given) {
    const auto entries = ReadAll();
    given.Has("json") ? PrintJson(entries) : PrintText(entries);
    // Problems are printed after the values, so that one damaged file does not hide the rest.
    Exit status = DONE;
    for (const Entry& entry : entries) {
        if (!entry.reading.problem.empty()) {
            status = Complain(entry.reading.problem, FAILED);
        }
    }
    return status;
}

}  // namespace applist::desktop
