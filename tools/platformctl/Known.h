// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include "data/Reading.h"
#include "data/SettingsStore.h"
#include "shared/Output.h"

/// The settings and factory items that the program reads. Only these can be written, so that a
/// mistyped key is an error and is not stored.
namespace applist::desktop {

/// A setting that can be written, with its type and range.
struct KnownSetting {
    std::string key;
    /// A value of the setting's type; the value itself is not used.
    Setting type;
    /// The valid range of an int setting.
    int32_t least;
    int32_t most;
    /// The distance between valid values of an int setting.
    int32_t step = 1;
};

/// A region and its name on the command line.
struct KnownRegion {
    const char* name;
    /// The value of the region's factory item.
    int32_t factoryValue;
};

std::span<const KnownSetting> KnownSettings();
std::span<const KnownRegion> KnownRegions();
/// Returns the names of all regions, separated by separator: "italy|brazil|...".
std::string RegionNames(const std::string& separator);

/// Parse words of the command line. If a word is invalid, the problem says why.
Reading<KnownSetting> FindSetting(const std::string& key);
Reading<int> FindFactoryItem(const std::string& id);
Reading<KnownRegion> FindRegion(const std::string& name);
Reading<Setting> ParseSetting(const KnownSetting& setting, const std::string& type,
                              const std::string& value);
Reading<int32_t> ParseFactoryValue(const std::string& value);

/// A setting or a factory item as the program reads it.
struct Datum {
    std::string name;
    std::string type;  ///< "bool" or "int".
    Reading<Setting> reading;
};

/// Reads a setting like the program does: a value of another type is a problem.
Datum ReadDatum(const KnownSetting& setting);

/// Reads the factory item that holds the region.
Datum ReadRegionDatum();

/// Returns an object with the datum's name, type and value. The value is null if it cannot be read.
tools::Json ObjectOf(const Datum& datum);

/// Returns "true", "false" or the number.
std::string ValueText(const Setting& setting);
/// Returns the value's text, "not set" or "unreadable".
std::string ValueText(const Reading<Setting>& reading);

}  // namespace applist::desktop
