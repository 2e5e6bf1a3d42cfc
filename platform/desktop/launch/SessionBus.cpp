// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/SessionBus.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace applist::desktop {

bool HasSessionBus() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    if (address != nullptr && *address != '\0') {
        return true;
    }
    // The default address that D-Bus clients use: $XDG_RUNTIME_DIR/bus.
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    std::error_code ignored;
    return folder != nullptr &&
           std::filesystem::exists(std::filesystem::path(folder) / "bus", ignored);
}

}  // namespace applist::desktop
