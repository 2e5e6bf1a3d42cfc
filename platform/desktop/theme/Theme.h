// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Loads the program's theme as an overlay over the toolkit's default theme: the high-contrast
/// variant if the setting HIGH_CONTRAST_KEY is true, else the standard one. Logs a missing theme
/// and an unreadable setting. Main thread only; call once, before the first window is created.
void LoadTheme();

}  // namespace applist::desktop
