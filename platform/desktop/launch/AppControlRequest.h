// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>
#include <vector>

/// A launch request: the application to launch, and string values by key in the order in which they
/// were added. The platform's headers only declare this type.
struct app_control_s {
    std::string appId;
    std::vector<std::pair<std::string, std::string>> extraData;
};
