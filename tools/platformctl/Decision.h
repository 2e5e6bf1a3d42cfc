// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// What the visibility decision looked at.
struct Circumstances {
    /// A LocalSet.
    int localSet = 0;
    int dataServiceFlag = 0;
    bool autorun = false;
    bool autostart = false;
};

/// The keys of the settings that decided, beside the region: with these values the answer is what
/// it is, whatever the other settings hold. Empty when the region alone decided.
std::vector<std::string> DecidingSettings(const Circumstances& circumstances);

}  // namespace applist::desktop
