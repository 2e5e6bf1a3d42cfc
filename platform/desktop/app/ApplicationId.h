// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>

namespace applist::desktop {

/// The application id of a program: "org.vantu." and the program file's name without its folder, so
/// "/usr/bin/applist" is "org.vantu.applist". A program that is named by its whole id keeps it.
/// Empty when that is no valid id.
std::string ApplicationIdOf(std::string_view program);

}  // namespace applist::desktop
