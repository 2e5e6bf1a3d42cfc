// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

struct app_control_s;

/// The life of the program where data services are not offered: it has the system's alert popup say
/// why, and ends. The functions are those of a ui_app_callbacks table; their user data is not used.

/// Launches the alert popup with the reason and asks the platform's loop to end, whatever became of
/// the launch. Blocks for up to five seconds while the set's region cannot be read. Returns true.
bool BannerCreate(void* data);

/// The rest of the life, in which nothing is left to do.
void BannerTerminate(void* data);
void BannerPause(void* data);
void BannerResume(void* data);
void BannerService(app_control_s* request, void* data);
