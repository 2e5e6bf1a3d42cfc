// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

/// The set's settings in two maps. Linking it provides vconf_get_bool() and vconf_get_int().
namespace applist::test {

struct FakeSettings {
    /// The stored settings; reading a key that is not in the map of its type fails.
    std::map<std::string, int> bools;
    std::map<std::string, int> ints;
    /// Every read, oldest first, including failed ones: "bool KEY" or "int KEY".
    std::vector<std::string> reads;
};

/// The one store of the process; tests assign FakeSettings{} to reset it.
FakeSettings& TheSettings();

}  // namespace applist::test
