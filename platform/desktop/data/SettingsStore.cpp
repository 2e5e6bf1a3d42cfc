// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/SettingsStore.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

#include "CallbackGuard.h"
#include "Log.h"
#include "Number.h"
#include "data/FilePaths.h"
#include "data/KeyFile.h"
#include "settings_store.h"

namespace applist::desktop {
namespace {

constexpr const char* GROUP = "settings";
constexpr std::string_view BOOL_TAG = "bool:";
constexpr std::string_view INT_TAG = "int:";

/// Returns the path of the file that holds key. Fails if key is in neither group.
Result<std::string> FileOf(const std::string& key) {
    if (key.starts_with("db/")) {
        return PersistentSettingsPath();
    }
    if (key.starts_with("memory/")) {
        return VolatileSettingsPath();
    }
    return Result<std::string>::Failure("setting '" + key +
                                        "' is neither under db/ nor under memory/");
}

// Other characters, such as '=' or a line end, have a meaning in a key file.
bool IsStorable(const std::string& key) {
    return std::all_of(key.begin(), key.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("/_-.").find(c) != std::string_view::npos;
    });
}

Failure Update(const std::string& key, const std::function<void(KeyFile&)>& change) {
    if (!IsStorable(key)) {
        return "setting '" + key + "' has characters that cannot be stored";
    }
    const auto path = FileOf(key);
    return path ? UpdateKeyFile(*path, change) : Failure(path.error());
}

/// Returns the value of a setting that a set need not store, or nothing for any other key.
std::optional<Setting> DefaultOf(std::string_view key) {
    static const std::array<std::pair<std::string_view, Setting>, 2> defaults{{
        {"db/menu/broadcasting/autorun-dataservice", false},
        {"memory/javamw/autostart-app", int32_t{0}},
    }};
    const auto* const found = std::find_if(defaults.begin(), defaults.end(),
                                           [key](const auto& entry) { return entry.first == key; });
    return found != defaults.end() ? std::optional(found->second) : std::nullopt;
}

/// Implements vconf_get_bool() and vconf_get_int(). Does not log a missing key, because the caller
/// logs it with a description of the setting.
template <typename Type>
int Get(const char* key, int* value) {
    const auto stored = ReadSetting(key);
    if (!stored) {
        LOG_ERROR("%s", stored.error().c_str());
        return -1;
    }
    // A stored value takes precedence over the default.
    const std::optional<Setting> setting = *stored ? *stored : DefaultOf(key);
    if (!setting) {
        return -1;
    }
    const auto* typed = std::get_if<Type>(&*setting);
    if (typed == nullptr) {
        LOG_ERROR("setting '%s' is of type %s, not %s", key, TypeName(*setting), TypeName(Type()));
        return -1;
    }
    *value = *typed;
    return 0;
}

// Logs a problem with a setting, empty if there is none, unless it is the problem that was logged
// last: each change of the file makes the programs read every setting again.
void LogNew(const char* key, const std::string& problem) {
    static std::map<std::string, std::string> logged;
    std::string& last = logged[key];
    if (problem != last && !problem.empty()) {
        LOG_ERROR("setting '%s' counts as missing: %s", key, problem.c_str());
    }
    last = problem;
}

// Returns the setting's value, or fallback if it is unset. A value that accept does not accept is
// logged and treated as unset.
template <typename Type, typename Accept>
Type ReadOr(const char* key, Type fallback, const char* expected, Accept accept) {
    const auto reading = ReadSetting(key);
    const std::optional<Setting> setting = reading ? *reading : std::nullopt;
    const Type* value = setting ? std::get_if<Type>(&*setting) : nullptr;
    const bool valid = value != nullptr && accept(*value);
    const std::string unfit = setting && !valid ? Encode(*setting) + " is not " + expected : "";
    LogNew(key, reading ? unfit : reading.error());
    return valid ? *value : fallback;
}

bool IsTextSize(int32_t size) {
    return size >= LEAST_TEXT_SIZE && size <= MOST_TEXT_SIZE &&
           (size - LEAST_TEXT_SIZE) % TEXT_SIZE_STEP == 0;
}

}  // namespace

std::string Encode(Setting setting) {
    if (const bool* truth = std::get_if<bool>(&setting)) {
        return std::string(BOOL_TAG) + (*truth ? "true" : "false");
    }
    return std::string(INT_TAG) + std::to_string(std::get<int32_t>(setting));
}

std::optional<Setting> Decode(std::string_view text) {
    if (text.starts_with(INT_TAG)) {
        return ParseNumber(text.substr(INT_TAG.size()));
    }
    if (text.starts_with(BOOL_TAG)) {
        text.remove_prefix(BOOL_TAG.size());
        if (text == "true" || text == "false") {
            return text == "true";
        }
    }
    return {};
}

const char* TypeName(const Setting& setting) {
    return std::holds_alternative<bool>(setting) ? "bool" : "int";
}

Result<std::optional<Setting>> ReadSetting(const std::string& key) {
    using Found = Result<std::optional<Setting>>;
    const auto path = FileOf(key);
    if (!path) {
        return Found::Failure(path.error());
    }
    // Read again on each call, because another process may have changed the file.
    const auto file = KeyFile::Load(*path);
    if (!file) {
        return Found::Failure(file.error());
    }
    const auto text = file->Get(GROUP, key);
    // A missing setting is not a problem here, because Get() may have a default for it.
    if (!text) {
        return Found(std::nullopt);
    }
    const auto setting = Decode(*text);
    return setting ? Found(setting)
                   : Found::Failure(*path + ": setting '" + key +
                                    "' does not have a bool or int value");
}

Failure WriteSetting(const std::string& key, Setting setting) {
    return Update(key, [&](KeyFile& file) { file.Set(GROUP, key, Encode(setting)); });
}

Failure RemoveSetting(const std::string& key) {
    return Update(key, [&](KeyFile& file) { file.Remove(GROUP, key); });
}

bool ReadFlag(const char* key) {
    return ReadOr(key, false, "a bool", [](bool) { return true; });
}

int32_t ReadTextSize() {
    return ReadOr(TEXT_SIZE_KEY, LEAST_TEXT_SIZE, "100, 125, 150 or 175", IsTextSize);
}

}  // namespace applist::desktop

extern "C" int vconf_get_bool(const char* key, int* value) {
    return applist::GuardCallback(-1, [=] { return applist::desktop::Get<bool>(key, value); });
}

extern "C" int vconf_get_int(const char* key, int* value) {
    return applist::GuardCallback(-1, [=] { return applist::desktop::Get<int32_t>(key, value); });
}
