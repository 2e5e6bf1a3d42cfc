// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/ApplicationId.h"

#include <gio/gio.h>

namespace applist::desktop {

std::string ApplicationIdOf(std::string_view program) {
    const std::string id =
        "org.vantu." + std::string(program.substr(program.find_last_of('/') + 1));
    return g_application_id_is_valid(id.c_str()) != 0 ? id : std::string();
}

}  // namespace applist::desktop
