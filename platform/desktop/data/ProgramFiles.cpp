// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/ProgramFiles.h"

#include <filesystem>
#include <system_error>

namespace applist::desktop {

namespace {

// Without /proc the result is "share", relative to the working directory.
std::filesystem::path ShareBesideProgram() {
    std::error_code unreadable;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", unreadable);
    return program.parent_path().parent_path() / "share";
}

}  // namespace

std::string FindData(const std::string& relative) {
    for (const auto& share : {ShareBesideProgram(), std::filesystem::path(INSTALLED_DATA_DIR)}) {
        std::error_code absent;
        const auto found = std::filesystem::canonical(share / relative, absent);
        if (!absent) {
            return found.string();
        }
    }
    return {};
}

}  // namespace applist::desktop
