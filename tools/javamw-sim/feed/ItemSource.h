// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "Result.h"
#include "protocol/Item.h"

namespace applist::sim {

/// Items to fill a list with, and a remark for the person at the terminal, mostly empty.
struct Feed {
    Items items;
    std::string remark;
};

/// A few applications for a first look, without any file.
Feed SampleFeed();

/// The items of a text file (ItemText.h). A failure names the file and the line.
Result<Feed> TextFeed(const std::string& file);

/// The applications that a recorded transport stream offers. A failure names the file; a stream
/// that offers none is one. The remark counts what was damaged.
Result<Feed> BroadcastFeed(const std::string& file);

}  // namespace applist::sim
