// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "subcommands/SessionArguments.h"

#include "subcommands/Numbers.h"

namespace applist::sim {
Option AddressOption() {
    return {"address", 'a', "ADDRESS", "Bus to use instead of the system bus"};
}

Option JsonOption() {
    return {"json", 'j', "", "Print one JSON object a line"};
}

std::vector<Option> SessionOptionsAnd(const std::vector<Option>& own) {
    std::vector<Option> options{
        AddressOption(),
        {"timeout", 't', "SECONDS", "Wait so long for an application"},
    };
    options.insert(options.end(), own.begin(), own.end());
    return options;
}

Option RecordOption() {
    return {"record", 'r', "FILE", "Write down all that is said and heard; see record --help"};
}

Result<SessionOptions> SessionOptionsFrom(const Arguments& given) {
    SessionOptions options;
    options.address = given.Value("address");
    options.json = given.Has("json");
    options.recordFile = given.Value("record");
    if (given.Has("timeout")) {
        const auto seconds = WholeNumber("timeout", "whole seconds", given.Value("timeout"));
        if (!seconds) {
            return Result<SessionOptions>::Failure(seconds.error());
        }
        options.timeout = *seconds;
    }
    return options;
}

}  // namespace applist::sim
