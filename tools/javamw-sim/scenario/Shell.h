// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "middleware/Session.h"

namespace applist::sim {

/// Runs statements line by line and prints the events that arrive. After a failed statement, it
/// continues on a terminal and ends otherwise. An offline shell joins the bus only when a statement
/// needs it. Returns the exit code of the program.
ExitCode RunShell(const SessionOptions& options, bool offline);

}  // namespace applist::sim
