// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "Result.h"
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

/// Parse words of the command line. If a word is invalid, the failure says why.
Result<KnownSetting> FindSetting(const std::string& key);
Result<int> FindFactoryItem(const std::string& id);
Result<KnownRegion> FindRegion(const std::string& name);
Result<Setting> ParseSetting(const KnownSetting& setting, const std::string& type,
                             const std::string& value);
Result<int32_t> ParseFactoryValue(const std::string& value);

/// The result of reading a setting, which need not be set.
using StoredSetting = Result<std::optional<Setting>>;

/// A setting or a factory item as the program reads it.
struct Datum {
    std::string name;
    std::string type;  ///< "bool" or "int".
    StoredSetting reading;

    /// Returns the value if it is set and can be read.
    std::optional<Setting> value() const { return reading ? *reading : std::nullopt; }
};

/// Reads a setting like the program does: a value of another type is a failure.
Datum ReadDatum(const KnownSetting& setting);

/// Reads the factory item that holds the region.
Datum ReadRegionDatum();

/// Returns an object with the datum's name, type and value. The value is null if it cannot be read.
tools::Json ObjectOf(const Datum& datum);

/// Returns "true", "false" or the number.
std::string ValueText(const Setting& setting);
/// Returns the value's text, "not set" or "unreadable".
std::string ValueText(const StoredSetting& reading);

}  // namespace applist::desktop
