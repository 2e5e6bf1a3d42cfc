// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/Subcommand.h"
#include "common/Result.h"
#include "feed/Feed.h"
#include "middleware/Session.h"

namespace applist::sim {

/// The value of an option that takes a number of at least 0. A failure names the option and what
/// it takes: "whole seconds".
Result<unsigned> WholeNumber(const std::string& option, const std::string& what,
                             const std::string& text);

/// A speed: a number above 0, or nothing for "max". A failure says what was given.
Result<std::optional<double>> Speed(const std::string& text);

/// The options of every subcommand that reads a broadcast from a file.
std::vector<Option> BroadcastOptions();

/// What those options say, or what is wrong with them; the interval is not one of them.
Result<BroadcastFeedOptions> BroadcastFeedOptionsFrom(const Arguments& given);

/// --address, for those that go to the bus in a way of their own.
Option AddressOption();

/// --json, for those that print what happens.
Option JsonOption();

/// The options of a subcommand that waits for applications on the bus, followed by its own.
std::vector<Option> SessionOptionsAnd(const std::vector<Option>& own);

/// The option of subcommands that are one session: record its traffic.
Option RecordOption();

/// What those options say, or what is wrong with them.
Result<SessionOptions> SessionOptionsFrom(const Arguments& given);

}  // namespace applist::sim
