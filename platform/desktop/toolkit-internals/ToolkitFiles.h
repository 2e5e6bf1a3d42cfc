// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// The files that the toolkit opens. Main thread only.
namespace applist::desktop {

/// Makes the toolkit open this file as its default theme. Otherwise its start reads the directory
/// of a file of 19 MB, of which the program uses four groups. Does nothing if the path is empty.
/// Call before elm_init().
void ReplaceDefaultTheme(const std::string& theme);

/// Returns the folders in which the toolkit has found fonts, so far.
const std::vector<std::string>& FontFolders();

}  // namespace applist::desktop
