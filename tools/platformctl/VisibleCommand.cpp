// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include <nlohmann/json.hpp>

#include "Commands.h"
#include "Decision.h"
#include "Known.h"
#include "PlatformSettings.h"
#include "visibility-checker.h"

namespace applist::desktop {
namespace {

constexpr const char* MENU_KEY = "menu/system/application-list";

/// Returns a setting's value, or 0 if it cannot be read, as in the decision itself.
int NumberOf(const std::string& key) {
    const auto value = ReadDatum(*FindSetting(key)).value();
    return value ? std::visit([](auto number) { return static_cast<int>(number); }, *value) : 0;
}

/// Returns the inputs of the decision. If the region cannot be read, GetLocalSet() is not called:
/// it would wait for five seconds, as the decision already did.
Circumstances ReadCircumstances(const Datum& region) {
    return {region.value() ? PlatformSettings::GetLocalSet() : LOCAL_NONE_OF,
            NumberOf(PlatformSettings::DATA_SERVICE_KEY),
            NumberOf(PlatformSettings::AUTORUN_DATA_SERVICE_KEY) != 0,
            NumberOf(PlatformSettings::AUTOSTART_APP) != 0};
}

struct Explanation {
    bool shown;
    /// The region and the settings that decided.
    std::vector<Datum> facts;
    /// The commands that make the set offer data services; empty if it does.
    std::vector<std::string> commands;
};

Explanation Explain(bool shown) {
    Explanation explanation{shown, {ReadRegionDatum()}, {}};
    const Circumstances circumstances = ReadCircumstances(explanation.facts[0]);
    for (const std::string& key : DecidingSettings(circumstances)) {
        explanation.facts.push_back(ReadDatum(*FindSetting(key)));
    }
    if (shown) {
        return explanation;
    }
    for (const std::string& command : CommandsToShow(circumstances)) {
        explanation.commands.push_back("platformctl " + command);
    }
    return explanation;
}

void PrintText(const Explanation& explanation) {
    std::printf("%s\n", explanation.shown ? "shown" : "hidden");
    for (const auto& [name, type, reading] : explanation.facts) {
        std::printf("  %s: %s\n", name.c_str(), ValueText(reading).c_str());
    }
    if (!explanation.commands.empty()) {
        std::puts("to offer the list, run:");
    }
    for (const std::string& command : explanation.commands) {
        std::printf("  %s\n", command.c_str());
    }
}

void PrintJson(const Explanation& explanation) {
    tools::Json facts = tools::Json::array();
    for (const Datum& fact : explanation.facts) {
        facts.push_back(ObjectOf(fact));
    }
    tools::Json commands = tools::Json::array();
    for (const std::string& command : explanation.commands) {
        commands.push_back({{"command", command}});
    }
    static_cast<void>(Print(tools::JsonText(
        {{"visible", explanation.shown}, {"decided_by", facts}, {"to_show", commands}})));
}

}  // namespace

int PrintVisible(const Arguments& given) {
    if (!ReadRegionDatum().value()) {
        static_cast<void>(std::fputs(
            "platformctl: the region is not set; the decision takes about five seconds\n", stderr));
    }
    // The entry point of the menu, so that the output shows the answer that a menu gets.
    const bool shown = check_visibility_int(MENU_KEY) != 0;
    const Explanation explanation = Explain(shown);
    given.Has("json") ? PrintJson(explanation) : PrintText(explanation);
    // The commands cannot change a damaged file, so the reason is printed as well.
    for (const auto& [name, type, reading] : explanation.facts) {
        if (!reading) {
            Complain(reading.error(), DONE);
        }
    }
    return DONE;
}

}  // namespace applist::desktop
