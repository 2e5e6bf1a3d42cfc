// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Known.h"

#include <algorithm>
#include <array>
#include <limits>

#include "Number.h"
#include "PlatformSettings.h"
#include "data/FactoryData.h"
#include "shared/Output.h"

namespace applist::desktop {
namespace {

constexpr int32_t LEAST = std::numeric_limits<int32_t>::min();
constexpr int32_t MOST = std::numeric_limits<int32_t>::max();

std::string Quoted(const std::string& text) {
    return "'" + text + "'";
}

Result<Setting> ParseBool(const std::string& value) {
    if (value == "true" || value == "1") {
        return Setting(true);
    }
    if (value == "false" || value == "0") {
        return Setting(false);
    }
    return Result<Setting>::Failure("value " + Quoted(value) +
                                    " is not a bool: true, false, 1 or 0");
}

Result<int32_t> ParseInt(const std::string& value) {
    const auto number = ParseNumber(value);
    return number ? Result(*number)
                  : Result<int32_t>::Failure("value " + Quoted(value) + " is not a 32-bit number");
}

Result<Setting> ParseRanged(const KnownSetting& setting, const std::string& value) {
    const auto number = ParseInt(value);
    if (!number) {
        return Result<Setting>::Failure(number.error());
    }
    if (*number < setting.least || *number > setting.most) {
        return Result<Setting>::Failure("value " + value + " is out of range for " + setting.key +
                                        ": " + std::to_string(setting.least) + " to " +
                                        std::to_string(setting.most));
    }
    // In 64 bits, because the difference of two 32-bit numbers may overflow.
    if ((int64_t{*number} - setting.least) % setting.step != 0) {
        return Result<Setting>::Failure("value " + value + " is not valid for " + setting.key +
                                        ": " + std::to_string(setting.least) + " to " +
                                        std::to_string(setting.most) + " in steps of " +
                                        std::to_string(setting.step));
    }
    return Setting(*number);
}

}  // namespace

std::span<const KnownSetting> KnownSettings() {
    static const std::array<KnownSetting, 7> settings{{
        {PlatformSettings::AUTORUN_DATA_SERVICE_KEY, false, 0, 0},
        {PlatformSettings::DATA_SERVICE_KEY, int32_t{0}, 0, 7},
        {PlatformSettings::AUTOSTART_APP, int32_t{0}, LEAST, MOST},
        {HIGH_CONTRAST_KEY, false, 0, 0},
        {TEXT_SIZE_KEY, int32_t{0}, LEAST_TEXT_SIZE, MOST_TEXT_SIZE, TEXT_SIZE_STEP},
        {REDUCED_MOTION_KEY, false, 0, 0},
        {SPEECH_KEY, false, 0, 0},
    }};
    return settings;
}

std::span<const KnownRegion> KnownRegions() {
    // "none" writes a region without data services. This differs from an unset item, for which the
    // program waits.
    static constexpr std::array<KnownRegion, 5> regions{{
        {"italy", FACTORY_ITALY},
        {"brazil", FACTORY_BRAZIL},
        {"argentina", FACTORY_ARGENTINA},
        {"uruguay", FACTORY_URUGUAY},
        {"none", 0},
    }};
    return regions;
}

std::string RegionNames(const std::string& separator) {
    return tools::Joined(KnownRegions(), separator, &KnownRegion::name);
}

Result<KnownSetting> FindSetting(const std::string& key) {
    const auto settings = KnownSettings();
    const auto found = std::ranges::find(settings, key, &KnownSetting::key);
    if (found == settings.end()) {
        return Result<KnownSetting>::Failure("unknown setting " + Quoted(key) + "; known: " +
                                             tools::Joined(settings, ", ", &KnownSetting::key));
    }
    return *found;
}

Result<int> FindFactoryItem(const std::string& id) {
    // The program reads only this item.
    if (ParseNumber(id) != ID_LOCALSET) {
        return Result<int>::Failure("unknown factory item " + Quoted(id) +
                                    "; known: " + std::to_string(ID_LOCALSET));
    }
    return ID_LOCALSET;
}

Result<KnownRegion> FindRegion(const std::string& name) {
    const auto regions = KnownRegions();
    const auto found = std::ranges::find(regions, name, &KnownRegion::name);
    if (found == regions.end()) {
        return Result<KnownRegion>::Failure("unknown region " + Quoted(name) +
                                            "; known: " + RegionNames(", "));
    }
    return *found;
}

Result<Setting> ParseSetting(const KnownSetting& setting, const std::string& type,
                             const std::string& value) {
    if (type != "bool" && type != "int") {
        return Result<Setting>::Failure("unknown type " + Quoted(type) + "; known: bool, int");
    }
    if (type != TypeName(setting.type)) {
        return Result<Setting>::Failure("setting " + setting.key + " is of type " +
                                        TypeName(setting.type) + ", not " + type);
    }
    return type == "bool" ? ParseBool(value) : ParseRanged(setting, value);
}

Result<int32_t> ParseFactoryValue(const std::string& value) {
    return ParseInt(value);
}

Datum ReadDatum(const KnownSetting& setting) {
    Datum datum{setting.key, TypeName(setting.type), ReadSetting(setting.key)};
    const auto value = datum.value();
    // A settings file may hold a value of another type than the program reads.
    if (value && value->index() != setting.type.index()) {
        datum.reading = StoredSetting::Failure("setting " + setting.key + " is stored as " +
                                               TypeName(*value) + ", not as " + datum.type);
    }
    return datum;
}

Datum ReadRegionDatum() {
    const auto item = ReadFactoryItem(ID_LOCALSET);
    return {"factory " + std::to_string(ID_LOCALSET), "int",
            item ? StoredSetting(*item) : StoredSetting::Failure(item.error())};
}

std::string ValueText(const Setting& setting) {
    if (const bool* truth = std::get_if<bool>(&setting)) {
        return *truth ? "true" : "false";
    }
    return std::to_string(std::get<int32_t>(setting));
}

std::string ValueText(const StoredSetting& reading) {
    if (!reading) {
        return "unreadable";
    }
    return *reading ? ValueText(**reading) : "not set";
}

}  // namespace applist::desktop
