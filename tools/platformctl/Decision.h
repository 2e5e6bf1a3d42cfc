// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// The inputs of the visibility decision.
struct Circumstances {
    /// A LocalSet.
    int localSet = 0;
    int dataServiceFlag = 0;
    bool autorun = false;
    bool autostart = false;
};

/// Returns the keys of the settings that decided, in addition to the region: while these keep their
/// values, no other setting can change the result. Empty if the region alone decided.
std::vector<std::string> DecidingSettings(const Circumstances& circumstances);

/// Returns the arguments of the platformctl commands that make the set offer data services, in the
/// order in which to run them. Empty if it already does. Each command keeps as much of the current
/// state as possible.
std::vector<std::string> CommandsToShow(const Circumstances& circumstances);

}  // namespace applist::desktop
