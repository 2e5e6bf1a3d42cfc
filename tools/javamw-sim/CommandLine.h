// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Result.h"
#include "commands/Session.h"
#include "protocol/Protocol.h"

namespace applist::sim {

enum class Command { Help, Version, Serve, Call, Watch };

/// What the person at the terminal asked for, checked.
struct CommandLine {
    Command command = Command::Help;
    std::string help;  ///< The text of Command::Help.
    SessionOptions session;
    std::string itemsFile;      ///< Serve; empty for none.
    std::string broadcastFile;  ///< Serve; empty for none.
    Function function{};        ///< Call.
    Items arguments;            ///< Call.
};

/// Options may stand anywhere; after "--" nothing is an option. arguments begin with the program's
/// name. A failure says what is wrong and where to read more.
Result<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments);

}  // namespace applist::sim
