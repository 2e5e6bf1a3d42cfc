// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "Result.h"
#include "data/KeyFile.h"

/// Storage of the settings that vconf_get_bool() and vconf_get_int() read. Only the set's menus
/// write them. Any thread, any number of processes; each call reads the files again.
namespace applist::desktop {

/// The value of a setting. Its type is stored with it.
using Setting = std::variant<bool, int32_t>;

/// Convert a setting to and from its stored form, such as "bool:true" or "int:-5". Decode() returns
/// nothing for any other text, including other spellings and numbers that exceed 32 bits.
std::string Encode(Setting setting);
std::optional<Setting> Decode(std::string_view text);

/// Settings of this port only. All but the last select the theme. True selects high contrast.
inline constexpr const char* HIGH_CONTRAST_KEY = "db/menu/accessibility/high-contrast";
/// The text size in per cent: 100 if unset, 125, 150 or 175.
inline constexpr const char* TEXT_SIZE_KEY = "db/menu/accessibility/text-size";
inline constexpr int32_t LEAST_TEXT_SIZE = 100;
inline constexpr int32_t MOST_TEXT_SIZE = 175;
inline constexpr int32_t TEXT_SIZE_STEP = 25;
/// True if nothing may move.
inline constexpr const char* REDUCED_MOTION_KEY = "db/menu/accessibility/reduced-motion";
/// True if the programs speak.
inline constexpr const char* SPEECH_KEY = "db/menu/accessibility/speech";

/// Returns "bool" or "int".
const char* TypeName(const Setting& setting);

/// Reads one setting as it is stored, or nothing if it is not: the defaults that vconf_get_bool()
/// and vconf_get_int() return for optional settings are not applied. Fails if key is neither under
/// "db/" nor under "memory/", or if the file or the value is damaged; the failure names the file.
Result<std::optional<Setting>> ReadSetting(const std::string& key);

/// Stores a setting and replaces its previous value, whatever type that had.
///
/// Fails if key is invalid or the file cannot be read or replaced. A valid key starts with one of
/// the folders above and consists of letters, digits, '/', '_', '-' and '.'.
Failure WriteSetting(const std::string& key, Setting setting);

/// Removes a setting; succeeds without a change if it does not exist. Fails like WriteSetting().
Failure RemoveSetting(const std::string& key);

// The two functions below do not use vconf_get_bool() and vconf_get_int(), because a missing
// setting is normal for them and must not be logged. Main thread only; each call reads the file
// again. An invalid or unreadable setting counts as missing. The problem is logged with the
// setting's name, and once only until it changes.

/// Returns a setting that is on or off. A missing setting is off.
bool ReadFlag(const char* key);
/// Returns the setting TEXT_SIZE_KEY, or LEAST_TEXT_SIZE if it is missing.
int32_t ReadTextSize();

}  // namespace applist::desktop
