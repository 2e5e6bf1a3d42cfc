// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "broadcast/Text.h"
#include "common/Result.h"
#include "feed/BroadcastFilter.h"
#include "link/Protocol.h"

namespace applist::sim {

/// Items from text: a line "id<TAB>name" each, UTF-8; blank lines and lines that begin with "#"
/// are skipped. The reason of a failure begins with the number of the line: "3: ...".
Result<Items> ParseItemText(std::string_view text);

/// A list and when it is to be shown.
struct FeedStep {
    double seconds = 0;  ///< Since the step before it.
    Items items;
};

/// Items to fill a list with, how they change in the course of time, and a remark for the person at
/// the terminal, mostly empty.
struct Feed {
    Items items;
    std::string remark;
    std::vector<FeedStep> changes{};
};

/// A few applications for a first look, without any file.
Feed SampleFeed();

/// The items of a text file (ItemText.h). A failure names the file and the line.
Result<Feed> TextFeed(const std::string& file);

/// How a recorded broadcast is to be read and played.
struct BroadcastFeedOptions {
    BroadcastFilter filter;
    std::optional<TextCoding> coding;
    std::optional<double> interval;  ///< Seconds between changes; none: as in the recording.
};

/// The applications that a file's broadcast offers (BroadcastFile.h) from snapshot to snapshot. A
/// file without a clock changes every second. A failure names the file; a broadcast that never
/// offers any is one. The remark counts what was damaged.
Result<Feed> BroadcastFeed(const std::string& file, const BroadcastFeedOptions& options = {});

}  // namespace applist::sim
