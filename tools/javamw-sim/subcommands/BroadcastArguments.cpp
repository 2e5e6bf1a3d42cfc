// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "subcommands/BroadcastArguments.h"

#include "feed/BroadcastFile.h"
#include "feed/Names.h"

namespace applist::sim {

std::vector<Option> BroadcastOptions() {
    return {
        {"service", 's', "SERVICE", "Only this service, by number or name; may be repeated"},
        {"language", 'l', "LIST", "Languages of names, the preferred first: ita,eng"},
        {"text", '\0', "CODING", "How texts are coded: auto, dvb, isdb, arib, latin"},
    };
}

Result<BroadcastFeedOptions> BroadcastFeedOptionsFrom(const Arguments& given) {
    BroadcastFeedOptions options;
    options.filter.services = given.Values("service");
    options.filter.languages =
        given.Has("language") ? ParseLanguages(given.Value("language")) : LocaleLanguages();
    if (given.Has("text")) {
        const auto coding = ParseTextCoding(given.Value("text"));
        if (!coding) {
            return Result<BroadcastFeedOptions>::Failure(coding.error());
        }
        options.coding = *coding;
    }
    return options;
}

}  // namespace applist::sim
