// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "CommandLine.h"

/// The commands of platformctl. Each prints its result to standard output and errors to standard
/// error, and returns the program's exit status.
namespace applist::desktop {

/// The arguments of a command. The caller has checked their number.
struct Request {
    std::vector<std::string> arguments;
    bool json = false;
};

Exit GetSetting(const Request& request);
Exit SetSetting(const Request& request);
Exit UnsetSetting(const Request& request);

Exit GetFactoryItem(const Request& request);
Exit SetFactoryItem(const Request& request);
Exit UnsetFactoryItem(const Request& request);
Exit SetRegion(const Request& request);

/// Prints all known settings and factory items with their values.
Exit ListData(const Request& request);

/// Prints the key table: which keys act as keys of the remote control.
Exit ListKeys(const Request& request);

/// Prints whether the menu shows the list's entry, and the values that decided it.
Exit PrintVisible(const Request& request);

Exit Launch(const Request& request);

}  // namespace applist::desktop
