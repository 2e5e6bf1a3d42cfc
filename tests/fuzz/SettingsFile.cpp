// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <array>
#include <optional>

#include "data/KeyFile.h"
#include "data/SettingsStore.h"
#include "fuzz/Properties.h"

namespace applist::test {
namespace {

using desktop::Decode;
using desktop::Encode;
using desktop::KeyFile;

constexpr const char* GROUP = "settings";
constexpr std::array KEYS{"db/menu/broadcasting/autorun-dataservice",
                          "memory/tv-viewer/data_service", "memory/javamw/autostart-app", "194"};

constexpr const char* BY_HAND =
    "# by hand\n[settings]\n# why\ndb/menu/broadcasting/autorun-dataservice = bool:true \r\n"
    "[other]\nkey[it]=value\n";

using Values = std::array<std::optional<std::string>, KEYS.size()>;

Values ValuesOf(const KeyFile& file) {
    Values values;
    std::transform(KEYS.begin(), KEYS.end(), values.begin(),
                   [&file](const char* key) { return file.Get(GROUP, key); });
    return values;
}

bool ReadsBack(std::string_view text) {
    const auto setting = Decode(text);
    return !setting || Decode(Encode(*setting)) == setting;
}

/// Changes the values one by one, each in the file that the previous change has left.
std::string CheckChanges(KeyFile& file) {
    for (size_t changed = 0; changed < KEYS.size(); ++changed) {
        Values expected = ValuesOf(file);
        expected.at(changed) = Encode(int32_t{-7});
        file.Set(GROUP, KEYS.at(changed), *expected.at(changed));
        const auto again = KeyFile::Parse(file.Text());
        if (!again) {
            return "a changed file cannot be read: " + again.error();
        }
        if (ValuesOf(*again) != expected) {
            return "a change touched more than its value";
        }
    }
    return {};
}

}  // namespace

std::string CheckSettingsFile(std::string_view bytes) {
    if (!ReadsBack(bytes)) {
        return "a setting's text does not read back";
    }
    auto file = KeyFile::Parse(bytes);
    if (static_cast<bool>(file) != file.error().empty()) {
        return "a file is read and damaged, or neither";
    }
    if (!file) {
        return {};
    }
    const Values values = ValuesOf(*file);
    if (!std::all_of(values.begin(), values.end(),
                     [](const auto& value) { return ReadsBack(value.value_or("")); })) {
        return "a setting of the file does not read back";
    }
    return CheckChanges(*file);
}

std::vector<std::string> SettingsFileSeeds() {
    return {
        "",
        "[settings]\nmemory/tv-viewer/data_service=int:2\nmemory/javamw/autostart-app=int:-1\n",
        BY_HAND,
        "[settings]\n194=8\n[settings]\n194=81",
        "bool:false",
        "int:-2147483648",
    };
}

}  // namespace applist::test
