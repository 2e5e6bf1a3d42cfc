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
    const Reading<Setting>& reading = datum.reading;
    if (!reading.value) {
        return Complain(reading.problem.empty() ? subject + " is not set" : reading.problem,
                        FAILED);
    }
    return Print(json ? tools::JsonText(ObjectOf(datum)) : ValueText(*reading.value) + '\n');
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
    if (datum.reading.value) {
        std::visit([&](auto value) { object["value"] = value; }, *datum.reading.value);
    }
    return object;
}

int GetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    return known.value ? PrintDatum(ReadDatum(*known.value), known.value->key, given.Has("json"))
                       : Complain(known.problem, WRONG_USAGE);
}

int SetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    if (!known.value) {
        return Complain(known.problem, WRONG_USAGE);
    }
    const auto setting = ParseSetting(*known.value, given.words()[1], given.words()[2]);
    return setting.value ? Finish(WriteSetting(known.value->key, *setting.value))
                         : Complain(setting.problem, WRONG_USAGE);
}

int UnsetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    return known.value ? Finish(RemoveSetting(known.value->key))
                       : Complain(known.problem, WRONG_USAGE);
}

// Only the region's item is known.
int GetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    return id.value ? PrintDatum(ReadRegionDatum(), "factory item " + std::to_string(*id.value),
                                 given.Has("json"))
                    : Complain(id.problem, WRONG_USAGE);
}

int SetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    if (!id.value) {
        return Complain(id.problem, WRONG_USAGE);
    }
    const auto value = ParseFactoryValue(given.words()[1]);
    return value.value ? Finish(WriteFactoryItem(*id.value, *value.value))
                       : Complain(value.problem, WRONG_USAGE);
}

int UnsetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    return id.value ? Finish(RemoveFactoryItem(*id.value)) : Complain(id.problem, WRONG_USAGE);
}

int SetRegion(const Arguments& given) {
    const auto region = FindRegion(given.words()[0]);
    return region.value ? Finish(WriteFactoryItem(ID_LOCALSET, region.value->factoryValue))
                        : Complain(region.problem, WRONG_USAGE);
}

int ListData(const Arguments& given) {
    const auto data = ReadAll();
    // Problems are printed after the values, so that one damaged file does not hide the rest.
    Exit status = given.Has("json") ? PrintJson(data) : PrintText(data);
    for (const Datum& datum : data) {
        if (!datum.reading.problem.empty()) {
            status = Complain(datum.reading.problem, FAILED);
        }
    }
    return status;
}

}  // namespace applist::desktop
