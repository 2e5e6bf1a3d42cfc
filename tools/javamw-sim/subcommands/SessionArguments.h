// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include "Subcommand.h"
#include "commands/Session.h"

namespace applist::sim {

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
