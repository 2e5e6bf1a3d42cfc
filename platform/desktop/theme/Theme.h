// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// Returns the absolute path of the program's theme: the high-contrast variant if the setting
/// HIGH_CONTRAST_KEY is true, else the standard one. Logs an unreadable setting, and a theme that
/// is missing or unreadable; the result is empty then.
std::string FindTheme();

/// Makes the toolkit open this file as its default theme. Otherwise its start reads the directory
/// of a file of 19 MB, of which the program uses four groups. Does nothing if the path is empty.
/// Main thread only; call before elm_init().
void ReplaceDefaultTheme(const std::string& theme);

/// Loads the theme for the windows that are created from now on. Logs a theme that the toolkit
/// rejects as its default. Does nothing if the path is empty. Main thread only; call after
/// elm_init().
void LoadTheme(const std::string& theme);

}  // namespace applist::desktop
