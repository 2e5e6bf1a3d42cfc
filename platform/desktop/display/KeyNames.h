// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string_view>

namespace applist::desktop {

/// The remote control's name for a key of a desktop keyboard: Escape is "XF86Back", and F10, as
/// well as an Exit key that the X server has no name for ("Keycode-182"), is "XF86Exit". Null for a
/// key that keeps its name. The result is static.
const char* RemoteControlKey(std::string_view keyboardKey);

}  // namespace applist::desktop
