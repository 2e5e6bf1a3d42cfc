// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace applist::desktop {

/// The result of reading one item. If both value and problem are empty, the item does not exist.
template <typename Value>
struct Reading {
    std::optional<Value> value;
    /// Why the item exists but cannot be read, including the name of the file.
    std::string problem;
};

/// The result of a change: nothing on success, else the reason for the failure. A failed change
/// leaves everything as it was.
using Failure = std::optional<std::string>;

}  // namespace applist::desktop
