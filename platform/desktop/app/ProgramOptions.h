// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Answers --help (-h) and --version, the options that every program of this port has, on standard
/// output. Returns true if one of them was given; the program then ends without starting. Other
/// arguments are ignored.
bool AnswerOptions(int argc, const char* const* argv);

}  // namespace applist::desktop
