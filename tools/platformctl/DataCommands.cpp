// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The commands that read and write settings and factory items.
#include <vector>

#include <nlohmann/json.hpp>

#include "Commands.h"
#include "Known.h"
#include "PlatformSettings.h"
#include "data/FactoryData.h"
#include "shared/Output.h"

namespace applist::desktop {
namespace {

int PrintDatum(const Datum& datum, const std::string& subject, bool json) {
    const auto value = datum.value();
    if (!value) {
        return Complain(datum.reading ? subject + " is not set" : datum.reading.error(), FAILED);
    }
    return Print(json ? tools::JsonText(ObjectOf(datum)) : ValueText(*value) + '\n');
}

int Finish(const Failure& failure) {
    return failure ? Complain(*failure, FAILED) : DONE;
}

std::vector<Datum> ReadAll() {
    std::vector<Datum> data;
    for (const KnownSetting& known : KnownSettings()) {
        data.push_back(ReadDatum(known));
    }
    data.push_back(ReadRegionDatum());
    return data;
}

Exit PrintText(const std::vector<Datum>& data) {
    std::string text;
    for (const auto& [name, type, reading] : data) {
        text.append(name).append("\t").append(type).append("\t");
        text.append(ValueText(reading)).append("\n");
    }
    return Print(text);
}

Exit PrintJson(const std::vector<Datum>& data) {
    tools::Json objects = tools::Json::array();
    for (const Datum& datum : data) {
        objects.push_back(ObjectOf(datum));
    }
    return Print(tools::JsonText({{"data", objects}}));
}

}  // namespace

tools::Json ObjectOf(const Datum& datum) {
    tools::Json object{{"name", datum.name}, {"type", datum.type}, {"value", nullptr}};
    if (const auto stored = datum.value()) {
        std::visit([&](auto value) { object["value"] = value; }, *stored);
    }
    return object;
}

int GetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    return known ? PrintDatum(ReadDatum(*known), known->key, given.Has("json"))
                 : Complain(known.error(), WRONG_USAGE);
}

int SetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    if (!known) {
        return Complain(known.error(), WRONG_USAGE);
    }
    const auto setting = ParseSetting(*known, given.words()[1], given.words()[2]);
    return setting ? Finish(WriteSetting(known->key, *setting))
                   : Complain(setting.error(), WRONG_USAGE);
}

int UnsetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    return known ? Finish(RemoveSetting(known->key)) : Complain(known.error(), WRONG_USAGE);
}

// Only the region's item is known.
int GetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    return id ? PrintDatum(ReadRegionDatum(), "factory item " + std::to_string(*id),
                           given.Has("json"))
              : Complain(id.error(), WRONG_USAGE);
}

int SetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    if (!id) {
        return Complain(id.error(), WRONG_USAGE);
    }
    const auto value = ParseFactoryValue(given.words()[1]);
    return value ? Finish(WriteFactoryItem(*id, *value)) : Complain(value.error(), WRONG_USAGE);
}

int UnsetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    return id ? Finish(RemoveFactoryItem(*id)) : Complain(id.error(), WRONG_USAGE);
}

int SetRegion(const Arguments& given) {
    const auto region = FindRegion(given.words()[0]);
    return region ? Finish(WriteFactoryItem(ID_LOCALSET, region->factoryValue))
                  : Complain(region.error(), WRONG_USAGE);
}

int ListData(const Arguments& given) {
    const auto data = ReadAll();
    // Problems are printed after the values, so that one damaged file does not hide the rest.
    Exit status = given.Has("json") ? PrintJson(data) : PrintText(data);
    for (const Datum& datum : data) {
        if (!datum.reading) {
            status = Complain(datum.reading.error(), FAILED);
        }
    }
    return status;
}

}  // namespace applist::desktop
