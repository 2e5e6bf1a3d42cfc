// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "broadcast/Broadcast.h"
#include "feed/BroadcastFilter.h"

/// The list of all applications of a broadcast, and its formats.
namespace applist::sim {

/// An application as one service describes it. All texts are UTF-8.
struct ListedApplication {
    std::optional<uint16_t> service;     ///< Absent in a file without services.
    uint16_t type = 0;                   ///< 0 if the source has no number for it.
    Application application{};           ///< With one name for each language, which is cleaned.
    std::string name{};                  ///< The preferred name; empty if there is none.
    std::vector<std::string> against{};  ///< Why it is not offered to viewers; empty if it is.

    bool operator==(const ListedApplication&) const = default;
};

/// Returns every application of a broadcast, offered or not, once for each service, in the order of
/// appearance. Each is described as in its last version.
std::vector<ListedApplication> ListApplications(const Broadcast& broadcast,
                                                const BroadcastFilter& filter);

/// Returns a table for people, with a header line. An absent value is "-".
std::string FormatTable(const std::vector<ListedApplication>& applications, bool why = false);

/// Returns an array of objects. An absent value is null.
std::string FormatJson(const std::vector<ListedApplication>& applications, bool why = false);

/// Returns RFC 4180 with a header line; every line ends with CR and LF. An absent value is empty;
/// the names are a JSON object.
std::string FormatCsv(const std::vector<ListedApplication>& applications, bool why = false);

}  // namespace applist::sim
