// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>

namespace applist::desktop {

// These do not use vconf_get_bool() and vconf_get_int(), because a missing setting is normal for
// them and must not be logged. Any thread; each call reads the file again.

/// Returns a setting that is on or off. A missing setting is off. An invalid or unreadable one is
/// logged and counts as off.
bool ReadFlag(const char* key);
/// Returns the setting TEXT_SIZE_KEY, or LEAST_TEXT_SIZE if it is missing. An invalid or unreadable
/// one is logged and counts as missing.
int32_t ReadTextSize();

}  // namespace applist::desktop
