// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Result.h"
#include "broadcast/Text.h"
#include "feed/BroadcastFilter.h"
#include "link/Protocol.h"

namespace applist::sim {

class LiveBroadcast;

/// Parses items from UTF-8 text with a line "id<TAB>name" each. Blank lines and lines that begin
/// with "#" are skipped. An error begins with the line number: "3: ...".
Result<Items> ParseItemText(std::string_view text);

/// A list and the time at which it is shown.
struct FeedStep {
    double seconds = 0;  ///< Since the previous step.
    Items items;
};

/// Items for a list and their changes over time. remark is a message for the user, usually empty.
struct Feed {
    Items items;
    std::string remark;
    std::vector<FeedStep> changes{};
    std::shared_ptr<LiveBroadcast> live{};  ///< Further changes; null if there are none.
};

/// Returns a few built-in applications.
Feed SampleFeed();

/// Reads the items of a text file (ParseItemText()). A failure names the file and the line.
Result<Feed> TextFeed(const std::string& file);

/// Options for reading and playing a recorded broadcast.
struct BroadcastFeedOptions {
    BroadcastFilter filter;
    std::optional<TextCoding> coding;
    std::optional<double> interval;  ///< Seconds between changes; absent: as recorded.
    bool follow = false;             ///< Waits for more at the end of a file or of a FIFO's writer.
};

/// Returns the offered applications of each snapshot of a file (BroadcastReader.h). A file without
/// a clock changes every second. Fails if the broadcast never offers an application. A failure
/// names the file; the remark counts the damage.
///
/// What is not a regular file, or is followed, is not read here: the feed is empty and live.
Result<Feed> BroadcastFeed(const std::string& file, const BroadcastFeedOptions& options = {});

}  // namespace applist::sim
