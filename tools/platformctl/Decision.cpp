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

}  // namespace

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
