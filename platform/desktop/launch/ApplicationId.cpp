// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "launch/ApplicationId.h"

#include <gio/gio.h>

namespace applist::desktop {
namespace {

constexpr const char* VENDOR = "org.vantu.";

}  // namespace

std::string ApplicationIdOf(std::string_view program) {
    const std::string name(program.substr(program.find_last_of('/') + 1));
    const std::string id = name.starts_with(VENDOR) ? name : VENDOR + name;
    return g_application_id_is_valid(id.c_str()) != 0 ? id : std::string();
}

}  // namespace applist::desktop
