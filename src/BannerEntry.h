// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

struct app_control_s;

/// The application's callbacks if data services are not offered: the program launches the set's
/// alert popup with the reason, and ends. The functions belong to a ui_app_callbacks table; their
/// user data is not used.

/// Launches the alert popup with the reason and asks the platform's loop to end, even if the launch
/// fails. Blocks for up to five seconds if the set's region cannot be read. Returns true.
bool BannerCreate(void* data);

/// The other callbacks do nothing.
void BannerTerminate(void* data);
void BannerPause(void* data);
void BannerResume(void* data);
void BannerService(app_control_s* request, void* data);
