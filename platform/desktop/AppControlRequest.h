// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

/// A launch request, as the desktop carries it: who is to be launched, and string values by key in
/// the order in which they were added. The platform's headers know it by name only.
struct app_control_s {
    std::string appId;
    std::vector<std::pair<std::string, std::string>> extraData;
};
