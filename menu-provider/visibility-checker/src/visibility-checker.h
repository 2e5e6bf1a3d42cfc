// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Returns true if data services are offered, which depends on the set's region and settings.
///
/// Stateless: each call reads the settings again. Blocks for up to five seconds if the region
/// cannot be read (see PlatformSettings::GetLocalSet()).
bool CheckVisibility();

/// Applies the DVB rule without checking the region: true if a data service exists, unless
/// automatic start is on and the middleware has an auto-start application.
bool CheckDVBVisibility();

/// Applies the ISDB rule without checking the region: true if the TV viewer's flags announce a data
/// service.
bool CheckISDBVisibility();

// The set's menu looks up these four functions by name and asks whether an entry is shown: 1 for
// shown, 0 for hidden. The program exports them; the loadable module exports only these. The module
// leaves no threads, handlers or other state in the host process, so it may be unloaded between any
// two calls.
extern "C" {

/// Returns CheckVisibility() as 0 or 1 for the key "menu/system/application-list". Returns 0 for
/// any other key and for null, without reading any setting.
int check_visibility_int(const char* key);

/// Always returns 1 and ignores key: only check_visibility_int() decides.
int check_visibility_bool(const char* key);
int check_visibility_double(const char* key);
int check_visibility_string(const char* key);
}
