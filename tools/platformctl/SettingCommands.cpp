// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdio>

#include "Commands.h"
#include "Json.h"
#include "Known.h"

namespace applist::desktop {

int GetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    if (!known.value) {
        return Complain(known.problem, WRONG_USAGE);
    }
    const auto reading = ReadKnownSetting(*known.value);
    if (!reading.value) {
        return Complain(
            reading.problem.empty() ? known.value->key + " is not set" : reading.problem, FAILED);
    }
    if (given.Has("json")) {
        Json()
            .Object()
            .Member("key", known.value->key)
            .Member("type", TypeName(*reading.value))
            .Member("value", reading.value)
            .EndObject()
            .Print();
    } else {
        std::printf("%s\n", ValueText(*reading.value).c_str());
    }
    return DONE;
}

int SetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    if (!known.value) {
        return Complain(known.problem, WRONG_USAGE);
    }
    const auto setting = ParseSetting(*known.value, given.words()[1], given.words()[2]);
    if (!setting.value) {
        return Complain(setting.problem, WRONG_USAGE);
    }
    const auto failure = WriteSetting(known.value->key, *setting.value);
    return failure ? Complain(*failure, FAILED) : DONE;
}

int UnsetSetting(const Arguments& given) {
    const auto known = FindSetting(given.words()[0]);
    if (!known.value) {
        return Complain(known.problem, WRONG_USAGE);
    }
    const auto failure = RemoveSetting(known.value->key);
    return failure ? Complain(*failure, FAILED) : DONE;
}

}  // namespace applist::desktop
