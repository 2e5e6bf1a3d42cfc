// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "Reading.h"
#include "SettingsStore.h"

/// The settings and factory items that the program reads: the only ones that can be written, so
/// that a slip of the keyboard is told and not stored.
namespace applist::desktop {

struct KnownSetting {
    std::string key;
    /// An example of the type; the value does not matter.
    Setting type;
    /// The range of a number.
    int32_t least;
    int32_t most;
};

struct KnownRegion {
    const char* name;
    /// What the factory item of the region holds.
    int32_t factoryValue;
};

std::span<const KnownSetting> KnownSettings();
std::span<const KnownRegion> KnownRegions();

/// Each names what was wrong in its problem when the words make no sense.
Reading<KnownSetting> FindSetting(const std::string& key);
Reading<int> FindFactoryItem(const std::string& id);
Reading<KnownRegion> FindRegion(const std::string& name);
Reading<Setting> ParseSetting(const KnownSetting& setting, const std::string& type,
                              const std::string& value);
Reading<int32_t> ParseFactoryValue(const std::string& value);

/// Reads a setting as the program would: another type than the known one is a problem.
Reading<Setting> ReadKnownSetting(const KnownSetting& setting);

/// Reads the factory item that holds the region.
Reading<Setting> ReadRegionItem();

/// "true", "false" or a number.
std::string ValueText(const Setting& setting);
/// The same, "not set" or "unreadable".
std::string ValueText(const Reading<Setting>& reading);

}  // namespace applist::desktop
