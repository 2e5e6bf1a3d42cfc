// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/ViewerSettings.h"

#include "Log.h"
#include "data/SettingsStore.h"

namespace applist::desktop {
namespace {

// Returns the setting's value, or fallback if it is unset. A value that accept does not accept is
// logged once and treated as unset.
template <typename Type, typename Accept>
Type Read(const char* key, Type fallback, const char* expected, Accept accept) {
    const Reading<Setting> setting = ReadSetting(key);
    if (!setting.problem.empty()) {
        LOG_ERROR("%s", setting.problem.c_str());
    }
    if (!setting.value) {
        return fallback;
    }
    const Type* value = std::get_if<Type>(&*setting.value);
    if (value == nullptr || !accept(*value)) {
        LOG_ERROR("setting '%s' is %s, not %s; the default is used", key,
                  Encode(*setting.value).c_str(), expected);
        return fallback;
    }
    return *value;
}

bool IsTextSize(int32_t size) {
    return size >= LEAST_TEXT_SIZE && size <= MOST_TEXT_SIZE &&
           (size - LEAST_TEXT_SIZE) % TEXT_SIZE_STEP == 0;
}

}  // namespace

bool ReadFlag(const char* key) {
    return Read(key, false, "a bool", [](bool) { return true; });
}

int32_t ReadTextSize() {
    return Read(TEXT_SIZE_KEY, LEAST_TEXT_SIZE, "100, 125, 150 or 175", IsTextSize);
}

}  // namespace applist::desktop
