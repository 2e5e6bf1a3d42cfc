// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeSettings.h"

#include "settings_store.h"

namespace applist::test {
namespace {

int Read(const std::map<std::string, int>& values, const char* key, int* value) {
    const auto found = values.find(key);
    if (found == values.end()) {
        return -1;
    }
    *value = found->second;
    return 0;
}

}  // namespace

FakeSettings& TheSettings() {
    static FakeSettings settings;
    return settings;
}

}  // namespace applist::test

using applist::test::TheSettings;

extern "C" int vconf_get_bool(const char* key, int* value) {
    TheSettings().reads.push_back(std::string("bool ") + key);
    return applist::test::Read(TheSettings().bools, key, value);
}

extern "C" int vconf_get_int(const char* key, int* value) {
    TheSettings().reads.push_back(std::string("int ") + key);
    return applist::test::Read(TheSettings().ints, key, value);
}
