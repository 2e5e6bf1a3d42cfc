// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "Commands.h"
#include "Decision.h"
#include "Json.h"
#include "Known.h"
#include "PlatformSettings.h"
#include "visibility-checker.h"

namespace applist::desktop {
namespace {

constexpr const char* MENU_KEY = "menu/system/application-list";

struct Fact {
    std::string name;
    Reading<Setting> reading;
};

/// Returns a setting's value, or 0 if it cannot be read, as in the decision itself.
int NumberOf(const std::string& key) {
    const auto value = ReadKnownSetting(*FindSetting(key).value).value;
    return value ? std::visit([](auto number) { return static_cast<int>(number); }, *value) : 0;
}

/// Returns the region and the settings that decided; only the region if it cannot be read. In that
/// case GetLocalSet() is not called: it would wait for five seconds, as the decision already did.
std::vector<Fact> DecidingFacts() {
    std::vector<Fact> facts{{"factory " + std::to_string(ID_LOCALSET), ReadRegionItem()}};
    if (!facts[0].reading.value) {
        return facts;
    }
    const Circumstances circumstances{PlatformSettings::GetLocalSet(),
                                      NumberOf(PlatformSettings::DATA_SERVICE_KEY),
                                      NumberOf(PlatformSettings::AUTORUN_DATA_SERVICE_KEY) != 0,
                                      NumberOf(PlatformSettings::AUTOSTART_APP) != 0};
    for (const std::string& key : DecidingSettings(circumstances)) {
        facts.push_back({key, ReadKnownSetting(*FindSetting(key).value)});
    }
    return facts;
}

void PrintText(bool shown, const std::vector<Fact>& facts) {
    std::printf("%s\n", shown ? "shown" : "hidden");
    for (const auto& [name, reading] : facts) {
        std::printf("  %s: %s\n", name.c_str(), ValueText(reading).c_str());
    }
}

void PrintJson(bool shown, const std::vector<Fact>& facts) {
    Json json;
    json.Object().Member("visible", Setting(shown)).Array("decided_by");
    for (const auto& [name, reading] : facts) {
        json.Object().Member("name", name).Member("value", reading.value).EndObject();
    }
    json.EndArray().EndObject().Print();
}

}  // namespace

Exit PrintVisible(const Request& request) {
    if (!ReadRegionItem().value) {
        static_cast<void>(std::fputs(
            "platformctl: the region is not set; the decision takes about five seconds\n", stderr));
    }
    // The entry point of the menu, so that the output shows the answer that a menu gets.
    const bool shown = check_visibility_int(MENU_KEY) != 0;
    const auto facts = DecidingFacts();
    request.json ? PrintJson(shown, facts) : PrintText(shown, facts);
    return DONE;
}

}  // namespace applist::desktop
