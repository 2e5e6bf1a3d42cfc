// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Lays the theme that HIGH_CONTRAST_KEY asks for, the standard one unless it is set, over the
/// toolkit's own. A theme that is missing, and a setting that cannot be read, are logged. Main
/// thread only, once, before the first window.
void LoadTheme();

}  // namespace applist::desktop
