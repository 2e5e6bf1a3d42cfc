// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "subcommands/SessionArguments.h"

#include <charconv>

namespace applist::sim {
namespace {

Result<unsigned> Seconds(const std::string& text) {
    unsigned seconds = 0;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, seconds);
    return error == std::errc() && last == end
               ? Result(seconds)
               : Result<unsigned>::Failure("--timeout takes whole seconds, not '" + text + "'");
}

}  // namespace

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

Result<SessionOptions> SessionOptionsFrom(const Arguments& given) {
    SessionOptions options;
    options.address = given.Value("address");
    options.json = given.Has("json");
    if (given.Has("timeout")) {
        const auto seconds = Seconds(given.Value("timeout"));
        if (!seconds) {
            return Result<SessionOptions>::Failure(seconds.error());
        }
        options.timeout = *seconds;
    }
    return options;
}

}  // namespace applist::sim
