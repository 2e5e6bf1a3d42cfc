// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "paths/DataPath.h"

#include <filesystem>
#include <system_error>

namespace applist::desktop {

std::string ProgramDir() {
    std::error_code unreadable;
    return std::filesystem::read_symlink("/proc/self/exe", unreadable).parent_path().string();
}

std::string FindData(const std::string& relative) {
    for (const std::string& share : {ProgramDir() + "/../share", std::string(INSTALLED_DATA_DIR)}) {
        std::error_code absent;
        const auto found = std::filesystem::canonical(share + "/" + relative, absent);
        if (!absent) {
            return found.string();
        }
    }
    return {};
}

}  // namespace applist::desktop
