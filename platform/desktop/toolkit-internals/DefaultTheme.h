// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// Makes the toolkit open this file as its default theme. Otherwise its start reads the directory
/// of a file of 19 MB, of which the program uses four groups. Does nothing if the path is empty.
/// Main thread only; call before elm_init().
void ReplaceDefaultTheme(const std::string& theme);

}  // namespace applist::desktop
