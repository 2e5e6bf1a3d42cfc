// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "Reading.h"

/// The settings behind vconf_get_bool() and vconf_get_int(), and what only the set's menus may do:
/// change them. Any thread, any number of processes; each call works on the files anew.
namespace applist::desktop {

/// The type is part of what is stored.
using Setting = std::variant<bool, int32_t>;

/// A setting as the files hold it, "bool:true" or "int:-5", and back. Nothing for any other text,
/// other spellings and numbers beyond 32 bits included.
std::string Encode(Setting setting);
std::optional<Setting> Decode(std::string_view text);

/// The port's own setting, beside those that the program reads: true for the high-contrast theme.
inline constexpr const char* HIGH_CONTRAST_KEY = "db/menu/accessibility/high-contrast";

/// "bool" or "int".
const char* TypeName(const Setting& setting);

/// Reads one setting. A key that is neither under "db/" nor under "memory/", a damaged file and a
/// damaged value are problems.
Reading<Setting> ReadSetting(const std::string& key);

/// Stores a setting in place of any before, of whatever type.
///
/// Fails for a key that cannot be stored (the folders above, then letters, digits and any of
/// "/_-."), and when the file cannot be read or replaced.
Failure WriteSetting(const std::string& key, Setting setting);

/// Removes a setting; nothing happens when there is none. Fails as WriteSetting() does.
Failure RemoveSetting(const std::string& key);

}  // namespace applist::desktop
