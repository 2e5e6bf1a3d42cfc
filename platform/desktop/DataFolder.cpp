// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "DataFolder.h"

#include <system_error>

namespace applist::desktop {

std::filesystem::path DataFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : program.parent_path().parent_path() / "share";
}

}  // namespace applist::desktop
