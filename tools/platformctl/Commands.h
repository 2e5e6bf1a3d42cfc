// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "CommandLine.h"

/// The commands of platformctl. Each prints its result on standard output, what went wrong on
/// standard error, and returns the program's exit status.
namespace applist::desktop {

/// The words behind a command; their number has been checked.
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

/// All that is known, with its values.
Exit ListData(const Request& request);

/// The keys that stand for keys of the remote control.
Exit ListKeys(const Request& request);

/// Asks the menu's question and tells the answer and its reason.
Exit TellVisible(const Request& request);

Exit Launch(const Request& request);

}  // namespace applist::desktop
