// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Any bytes as a file of the settings store: reading never crashes, and what can be read can be
// changed without becoming unreadable and without touching the other settings.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

#include "KeyFile.h"
#include "Number.h"
#include "SettingsStore.h"

using namespace applist::desktop;

namespace {

constexpr const char* GROUP = "settings";
constexpr std::array KEYS{"db/menu/broadcasting/autorun-dataservice",
                          "memory/tv-viewer/data_service", "memory/javamw/autostart-app", "194"};

void Require(bool condition, const char* what) {
    if (!condition) {
        std::fprintf(stderr, "broken: %s\n", what);
        std::abort();
    }
}

/// Decoding is strict: a text that is a setting is the one text of that setting, but for the
/// leading zeros of a number.
void CheckText(const std::string& text) {
    const auto setting = Decode(text);
    Require(!setting || Decode(Encode(*setting)) == setting, "a setting's text reads back");
    ParseNumber(text);
}

void CheckChange(KeyFile& file, const char* changed) {
    std::array<std::optional<std::string>, KEYS.size()> before;
    for (size_t i = 0; i < KEYS.size(); ++i) {
        before[i] = file.Get(GROUP, KEYS[i]);
    }
    file.Set(GROUP, changed, Encode(int32_t{-7}));
    const auto again = KeyFile::Parse(file.Text());
    Require(again.value.has_value(), "a changed file can be read");
    for (size_t i = 0; i < KEYS.size(); ++i) {
        const auto expected =
            KEYS[i] == std::string(changed) ? std::optional<std::string>("int:-7") : before[i];
        Require(again.value->Get(GROUP, KEYS[i]) == expected, "a change leaves the others alone");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    CheckText(content);
    auto file = KeyFile::Parse(content);
    Require(file.value.has_value() == file.problem.empty(), "a file that cannot be read says why");
    if (file.value) {
        for (const char* key : KEYS) {
            CheckText(file.value->Get(GROUP, key).value_or(""));
            CheckChange(*file.value, key);
        }
    }
    return 0;
}
