// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::sim {

/// One entry of the application's list, as the middleware sees it.
struct Item {
    std::string id;    ///< The entry's identity; empty stands for no entry.
    std::string name;  ///< What the viewer reads, UTF-8.

    bool operator==(const Item&) const = default;
};

using Items = std::vector<Item>;

}  // namespace applist::sim
