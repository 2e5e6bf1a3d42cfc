// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <optional>
#include <string>

namespace applist::desktop {

/// What reading one thing came to. Neither value nor problem: it is not there.
template <typename Value>
struct Reading {
    std::optional<Value> value;
    /// Why it is there and cannot be read; names the file.
    std::string problem;
};

/// What changing something came to: nothing, or why it could not be done. A failed change leaves
/// everything as it was.
using Failure = std::optional<std::string>;

}  // namespace applist::desktop
