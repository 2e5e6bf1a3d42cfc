// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "shared/CommandLine.h"

/// The commands of platformctl. Each prints its result to standard output and errors to standard
/// error, and returns the program's exit status.
namespace applist::desktop {

using tools::Arguments;

/// The exit statuses of the program.
enum Exit { DONE = 0, FAILED = 1, WRONG_USAGE = 2 };

/// Prints "platformctl: PROBLEM" on standard error; returns status.
Exit Complain(const std::string& problem, Exit status);

/// Prints text on standard output. Returns FAILED if it cannot be written.
Exit Print(const std::string& text);

/// Print, store or remove one setting.
int GetSetting(const Arguments& given);
int SetSetting(const Arguments& given);
int UnsetSetting(const Arguments& given);

/// Print, store or remove one factory item; SetRegion() stores the item that holds the region.
int GetFactoryItem(const Arguments& given);
int SetFactoryItem(const Arguments& given);
int UnsetFactoryItem(const Arguments& given);
int SetRegion(const Arguments& given);

/// Prints all known settings and factory items with their values.
int ListData(const Arguments& given);

/// Prints the key table: which keys act as keys of the remote control.
int ListKeys(const Arguments& given);

/// Prints whether the menu shows the list's entry, and the values that decided it.
int PrintVisible(const Arguments& given);

/// Sends a launch request with extra data to an application.
int Launch(const Arguments& given);

}  // namespace applist::desktop
