// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "Result.h"
#include "feed/Feed.h"
#include "middleware/Session.h"
#include "shared/CommandLine.h"

/// The commands of javamw-sim and what several of them share.
namespace applist::sim {

using tools::Arguments;
using tools::Command;
using tools::Option;

/// The names of the functions that "call" makes.
std::vector<std::string> FunctionNames();

// The commands in the order of the help.
std::vector<Command> SessionCommands();    ///< serve, watch, call
std::vector<Command> StatementCommands();  ///< run, shell
Command ApplicationsCommand();
std::vector<Command> RecordingCommands();  ///< record, replay, compare

/// Returns the first error that is not empty.
std::string FirstOf(std::initializer_list<std::string> errors);

/// Returns "arguments 1 and 3 are both standard input" if two of them are "-", which can be read
/// only once. Otherwise returns an empty string.
std::string InputTakenTwice(const std::vector<std::string>& arguments);

/// Parses the value of an option that takes a number of at least 0. A failure names the option and
/// the expected value: "whole seconds".
Result<unsigned> WholeNumber(const std::string& option, const std::string& what,
                             const std::string& text);

/// Parses a speed: a number above 0, or nothing for "max".
Result<std::optional<double>> Speed(const std::string& text);

/// Options of every subcommand that reads a broadcast from a file.
std::vector<Option> BroadcastOptions();

/// The values of --text.
std::vector<std::string> TextCodingNames();

/// Parses those options. The interval is not one of them.
Result<BroadcastFeedOptions> BroadcastFeedOptionsFrom(const Arguments& given);

/// --address, for subcommands that do not use SessionOptionsAnd().
Option AddressOption();

/// --json, for subcommands that print events.
Option JsonOption();

/// Options of a subcommand that waits for applications on the bus, followed by own.
std::vector<Option> SessionOptionsAnd(const std::vector<Option>& own);

/// --record, for subcommands that run one session.
Option RecordOption();

/// Parses the options of a session.
Result<SessionOptions> SessionOptionsFrom(const Arguments& given);

}  // namespace applist::sim
