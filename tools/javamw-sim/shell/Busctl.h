// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "common/Result.h"
#include "scenario/Statement.h"

namespace applist::sim {

/// The bus and the application for the busctl command lines.
struct BusctlTarget {
    std::string address;      ///< Address of the bus; empty for the system bus.
    std::string application;  ///< Unique name; empty if no application is known.
};

/// Returns the command lines for a POSIX shell that do the same as action with busctl. For an
/// expectation, they print the value that it checks. A failure contains the reason why there are
/// none.
Result<std::vector<std::string>> BusctlLines(const Action& action, const BusctlTarget& target);

}  // namespace applist::sim
