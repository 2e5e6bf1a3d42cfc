// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "common/Result.h"
#include "scenario/Statement.h"

namespace applist::sim {

/// Where a busctl would find what the shell talks to.
struct BusctlTarget {
    std::string address;      ///< Of the bus; empty for the system bus.
    std::string application;  ///< Its unique name; empty if none has been heard.
};

/// The command lines for a POSIX shell that do with busctl what action does on the bus; of an
/// expectation, those that show what it looks at. A failure says why there are none.
Result<std::vector<std::string>> BusctlLines(const Action& action, const BusctlTarget& target);

}  // namespace applist::sim
