// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "paths/DataPath.h"

#include <filesystem>
#include <system_error>

#include "DataFolder.h"

namespace applist::desktop {

std::string FindData(const std::string& relative) {
    for (const auto& share : {DataFolder(), std::filesystem::path(INSTALLED_DATA_DIR)}) {
        std::error_code absent;
        const auto found = std::filesystem::canonical(share / relative, absent);
        if (!absent) {
            return found.string();
        }
    }
    return {};
}

}  // namespace applist::desktop
