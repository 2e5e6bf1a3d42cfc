// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/ItemSource.h"

#include <algorithm>
#include <utility>

#include "feed/BroadcastFile.h"
#include "feed/ItemText.h"
#include "feed/MappedFile.h"

namespace applist::sim {
namespace {

constexpr double STEP_WITHOUT_CLOCK_S = 1;

double SecondsBetween(const Moment& earlier, const Moment& later) {
    if (!earlier.seconds || !later.seconds) {
        return STEP_WITHOUT_CLOCK_S;
    }
    return std::max(0.0, *later.seconds - *earlier.seconds);
}

// A moment that changes nothing for the viewer only takes its time.
Feed Play(const Broadcast& broadcast, const BroadcastFeedOptions& options) {
    Feed feed;
    feed.items = OfferedItems(broadcast.moments.front(), options.filter);
    Items shown = feed.items;
    double waited = 0;
    for (size_t i = 1; i < broadcast.moments.size(); ++i) {
        const Moment& moment = broadcast.moments[i];
        waited += SecondsBetween(broadcast.moments[i - 1], moment);
        Items items = OfferedItems(moment, options.filter);
        if (items != shown) {
            shown = items;
            feed.changes.push_back({options.interval.value_or(waited), std::move(items)});
            waited = 0;
        }
    }
    return feed;
}

bool IsEmpty(const Feed& feed) {
    return feed.items.empty() &&
           std::all_of(feed.changes.begin(), feed.changes.end(),
                       [](const FeedStep& step) { return step.items.empty(); });
}

}  // namespace

Feed SampleFeed() {
    return {{{"0000000b.0001", "Guida TV"},
             {"0000000b.0002", "Meteo"},
             {"0000000b.0003", "Notizie"},
             {"0000000b.0004", "Sport e Attualit\u00e0"},
             {"0000000b.0005", "Televideo"}},
            {},
            {}};
}

Result<Feed> TextFeed(const std::string& file) {
    const auto mapped = MapFile(file);
    if (!mapped) {
        return Result<Feed>::Failure(mapped.error());
    }
    auto items = ParseItemText(ContentOf(*mapped));
    if (!items) {
        return Result<Feed>::Failure(file + ":" + items.error());
    }
    return Feed{std::move(*items), {}};
}

Result<Feed> BroadcastFeed(const std::string& file, const BroadcastFeedOptions& options) {
    const auto broadcast = ReadBroadcastFile(file, options.coding);
    if (!broadcast) {
        return Result<Feed>::Failure(broadcast.error());
    }
    const std::string missing = MissingService(*broadcast, options.filter);
    if (!missing.empty()) {
        return Result<Feed>::Failure(file + ": " + missing);
    }
    Feed feed = Play(*broadcast, options);
    feed.remark = DamageRemark(file, broadcast->damage);
    if (IsEmpty(feed)) {
        return Result<Feed>::Failure(file + ": offers no applications" +
                                     (feed.remark.empty() ? "" : "\n" + feed.remark));
    }
    return feed;
}

}  // namespace applist::sim
