// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::sim {

/// What the program's end tells its caller; --help lists them.
enum class ExitCode : int {
    Success = 0,
    CallFailed = 1,     ///< Or the application ended first, or the output could not be written.
    WrongUsage = 2,     ///< Or an input file that cannot be used.
    NoBus = 3,          ///< Not reachable, or lost later.
    NoApplication = 4,  ///< None was there in time.
};

}  // namespace applist::sim
