// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

#include "Result.h"

namespace applist::sim {

/// The value of an option that takes a number of at least 0. A failure names the option and what
/// it takes: "whole seconds".
Result<unsigned> WholeNumber(const std::string& option, const std::string& what,
                             const std::string& text);

/// A speed: a number above 0, or nothing for "max". A failure says what was given.
Result<std::optional<double>> Speed(const std::string& text);

}  // namespace applist::sim
