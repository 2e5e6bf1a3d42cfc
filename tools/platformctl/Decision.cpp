// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Decision.h"

#include "PlatformSettings.h"

namespace applist::desktop {
namespace {

std::vector<std::string> DecidingInItaly(const Circumstances& circumstances) {
    if ((circumstances.dataServiceFlag & DATA_SERVICE_EXISTS) == 0) {
        return {PlatformSettings::DATA_SERVICE_KEY};
    }
    // The entry is hidden only if both are on, so both together decided.
    if (circumstances.autorun && circumstances.autostart) {
        return {PlatformSettings::AUTORUN_DATA_SERVICE_KEY, PlatformSettings::AUTOSTART_APP};
    }
    // The entry is shown because at least one of the two is off. Naming one is enough.
    return {PlatformSettings::DATA_SERVICE_KEY, circumstances.autorun
                                                    ? PlatformSettings::AUTOSTART_APP
                                                    : PlatformSettings::AUTORUN_DATA_SERVICE_KEY};
}

/// The bits of the flag that platformctl can store.
constexpr int STORABLE_FLAG_BITS = 7;

std::string SetDataService(int flag) {
    const int changed = (flag & STORABLE_FLAG_BITS) | DATA_SERVICE_EXISTS;
    return "set " + PlatformSettings::DATA_SERVICE_KEY + " int " + std::to_string(changed);
}

std::vector<std::string> CommandsToShowInItaly(const Circumstances& circumstances) {
    std::vector<std::string> commands;
    if ((circumstances.dataServiceFlag & DATA_SERVICE_EXISTS) == 0) {
        commands.push_back(SetDataService(circumstances.dataServiceFlag));
    }
    if (circumstances.autorun && circumstances.autostart) {
        commands.push_back("set " + PlatformSettings::AUTORUN_DATA_SERVICE_KEY + " bool false");
    }
    return commands;
}

}  // namespace

std::vector<std::string> CommandsToShow(const Circumstances& circumstances) {
    switch (circumstances.localSet) {
        case LOCAL_ITALY:
            return CommandsToShowInItaly(circumstances);
        case LOCAL_BRAZIL:
        case LOCAL_ARGENTINA:
        case LOCAL_URUGUAY:
            if ((circumstances.dataServiceFlag & DATA_SERVICE_ISDB_MASK) != 0) {
                return {};
            }
            return {SetDataService(circumstances.dataServiceFlag)};
        default: {
            // Any region that offers data services will do; Italy's rule is the strictest.
            auto commands = CommandsToShowInItaly(circumstances);
            commands.insert(commands.begin(), "region italy");
            return commands;
        }
    }
}

std::vector<std::string> DecidingSettings(const Circumstances& circumstances) {
    switch (circumstances.localSet) {
        case LOCAL_ITALY:
            return DecidingInItaly(circumstances);
        case LOCAL_BRAZIL:
        case LOCAL_ARGENTINA:
        case LOCAL_URUGUAY:
            return {PlatformSettings::DATA_SERVICE_KEY};
        default:
            return {};
    }
}

}  // namespace applist::desktop
