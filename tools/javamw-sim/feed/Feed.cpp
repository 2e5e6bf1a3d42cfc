// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/Feed.h"

#include <algorithm>
#include <glib.h>
#include <map>
#include <utility>

#include "File.h"
#include "broadcast/BroadcastReader.h"
#include "feed/LiveBroadcast.h"
#include "shared/LineReader.h"

namespace applist::sim {
namespace {

// Parses a line that is neither blank nor a comment.
Result<Item> ParseItem(std::string_view line) {
    const size_t tab = line.find('\t');
    const char* problem = nullptr;
    if (g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr) == FALSE) {
        problem = "not UTF-8";
    } else if (tab == std::string_view::npos) {
        problem = "no tab between id and name";
    } else if (tab == 0) {
        problem = "empty id";
    }
    return problem == nullptr
               ? Result(Item{std::string(line.substr(0, tab)), std::string(line.substr(tab + 1))})
               : Result<Item>::Failure(problem);
}

}  // namespace

Result<Items> ParseItemText(std::string_view text) {
    Items items;
    // The line of the first use, so that the error of a repeated id can name both places.
    std::map<std::string, size_t> lineOfId;
    size_t number = 0;
    for (std::string_view line : tools::LinesOf(text)) {
        const std::string place = std::to_string(++number) + ": ";
        // Accepts files with the line ends of Windows.
        line.remove_suffix(line.ends_with('\r') ? 1 : 0);
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        auto item = ParseItem(line);
        if (!item) {
            return Result<Items>::Failure(place + item.error());
        }
        const auto [known, isNew] = lineOfId.try_emplace(item->id, number);
        if (!isNew) {
            return Result<Items>::Failure(place + "id '" + item->id + "' is already in line " +
                                          std::to_string(known->second));
        }
        items.push_back(std::move(*item));
    }
    return items;
}

namespace {

// Used for XML and sections, which do not contain a clock.
constexpr double STEP_WITHOUT_CLOCK_S = 1;

double SecondsBetween(const Snapshot& earlier, const Snapshot& later) {
    if (!earlier.seconds || !later.seconds) {
        return STEP_WITHOUT_CLOCK_S;
    }
    return std::max(0.0, *later.seconds - *earlier.seconds);
}

// A snapshot that changes nothing for the viewer only adds its duration.
Feed Play(const Broadcast& broadcast, const BroadcastFeedOptions& options) {
    Feed feed;
    feed.items = OfferedItems(broadcast.snapshots.front(), options.filter);
    Items shown = feed.items;
    double waited = 0;
    for (size_t i = 1; i < broadcast.snapshots.size(); ++i) {
        const Snapshot& snapshot = broadcast.snapshots[i];
        waited += SecondsBetween(broadcast.snapshots[i - 1], snapshot);
        Items items = OfferedItems(snapshot, options.filter);
        // Different snapshots may offer the same items, for example if only hidden ones change.
        if (items != shown) {
            shown = items;
            feed.changes.push_back({options.interval.value_or(waited), std::move(items)});
            waited = 0;
        }
    }
    return feed;
}

bool IsEmpty(const Feed& feed) {
    return feed.items.empty() && std::ranges::all_of(feed.changes, [](const FeedStep& step) {
               return step.items.empty();
           });
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
    const auto text = ReadFile(file);
    if (!text) {
        return Result<Feed>::Failure(text.error());
    }
    auto items = ParseItemText(*text);
    if (!items) {
        // The error begins with the line number, so the text is "file:line: reason".
        return Result<Feed>::Failure(file + ":" + items.error());
    }
    return Feed{std::move(*items), {}};
}

Result<Feed> BroadcastFeed(const std::string& file, const BroadcastFeedOptions& options) {
    using Use = InputFile::Use;
    auto input = InputFile::Open(file, options.follow ? Use::Follow : Use::Live);
    if (!input) {
        return Result<Feed>::Failure(input.error());
    }
    if (options.follow || !input->IsRegular()) {
        return Feed{{}, {}, {}, std::make_shared<LiveBroadcast>(file, std::move(*input), options)};
    }
    const auto broadcast = ReadBroadcastFile(file, options.coding);
    if (!broadcast) {
        return Result<Feed>::Failure(broadcast.error());
    }
    // Checked before playing, because an unknown service would otherwise appear as an empty list.
    const std::string missing = MissingService(*broadcast, options.filter);
    if (!missing.empty()) {
        return Result<Feed>::Failure(file + ": " + missing);
    }
    Feed feed = Play(*broadcast, options);
    // Damage is not an error if applications are left, so it is only a remark.
    feed.remark = DamageRemark(file, broadcast->damage);
    if (IsEmpty(feed)) {
        return Result<Feed>::Failure(file + ": offers no applications" +
                                     (feed.remark.empty() ? "" : "\n" + feed.remark));
    }
    return feed;
}

}  // namespace applist::sim
