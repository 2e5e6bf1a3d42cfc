// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace applist::desktop {

/// Returns the application id of a program: "org.vantu." and the file name without its folder, so
/// "/usr/bin/applist" becomes "org.vantu.applist". A file name that is already a complete id is
/// returned unchanged. Returns an empty string if the result is not a valid id.
std::string ApplicationIdOf(std::string_view program);

}  // namespace applist::desktop
