// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "common/Output.h"
#include "shared/CommandLine.h"

namespace applist::sim {

using tools::Arguments;
using tools::Command;
using tools::Option;

/// The names of the functions that "call" makes.
std::vector<std::string> FunctionNames();

// Each command is defined in a file of its own.
Command ApplicationsCommand();
Command CallCommand();
Command CompareCommand();
Command RecordCommand();
Command ReplayCommand();
Command RunCommand();
Command ServeCommand();
Command ShellCommand();
Command WatchCommand();

}  // namespace applist::sim
