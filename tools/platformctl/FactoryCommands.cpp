// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "Commands.h"
#include "Json.h"
#include "Known.h"
#include "PlatformSettings.h"
#include "data/FactoryData.h"

namespace applist::desktop {

int GetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    if (!id.value) {
        return Complain(id.problem, WRONG_USAGE);
    }
    const auto reading = ReadFactoryItem(*id.value);
    if (!reading.value) {
        return Complain(reading.problem.empty() ? "factory item " + given.words()[0] + " is not set"
                                                : reading.problem,
                        FAILED);
    }
    if (given.Has("json")) {
        Json()
            .Object()
            .Member("id", Setting(*id.value))
            .Member("value", Setting(*reading.value))
            .EndObject()
            .Print();
    } else {
        std::printf("%d\n", *reading.value);
    }
    return DONE;
}

int SetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    if (!id.value) {
        return Complain(id.problem, WRONG_USAGE);
    }
    const auto value = ParseFactoryValue(given.words()[1]);
    if (!value.value) {
        return Complain(value.problem, WRONG_USAGE);
    }
    const auto failure = WriteFactoryItem(*id.value, *value.value);
    return failure ? Complain(*failure, FAILED) : DONE;
}

int UnsetFactoryItem(const Arguments& given) {
    const auto id = FindFactoryItem(given.words()[0]);
    if (!id.value) {
        return Complain(id.problem, WRONG_USAGE);
    }
    const auto failure = RemoveFactoryItem(*id.value);
    return failure ? Complain(*failure, FAILED) : DONE;
}

int SetRegion(const Arguments& given) {
    const auto region = FindRegion(given.words()[0]);
    if (!region.value) {
        return Complain(region.problem, WRONG_USAGE);
    }
    const auto failure = WriteFactoryItem(ID_LOCALSET, region.value->factoryValue);
    return failure ? Complain(*failure, FAILED) : DONE;
}

}  // namespace applist::desktop
