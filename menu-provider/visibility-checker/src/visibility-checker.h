// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

/// Are data services offered on this set, in this region, with these settings?
///
/// No state: each call reads the settings anew, and blocks for up to five seconds when the region
/// cannot be read (see PlatformSettings::GetLocalSet()).
bool CheckVisibility();

/// The rule of the DVB region, whatever the region: a data service exists, and it is not the case
/// that it starts by itself anyway.
bool CheckDVBVisibility();

/// The rule of the ISDB regions, whatever the region: the TV viewer's flags offer a service.
bool CheckISDBVisibility();

// The set's menu looks these four up by name and asks whether an entry is shown: 1 shown, 0 not.
// The program exports them, and the loadable module exports nothing else. The module leaves its
// host process as it found it and may be unloaded at any time between two calls.
extern "C" {

/// CheckVisibility() for "menu/system/application-list"; 0, without asking, for any other key and
/// for null.
int check_visibility_int(const char* key);

/// Always 1: only the form for int carries the decision. The key is not looked at.
int check_visibility_bool(const char* key);
int check_visibility_double(const char* key);
int check_visibility_string(const char* key);
}
