// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "feed/ApplicationList.h"

namespace applist::sim {

/// Returns a table for people, with a header line. An absent value is "-".
std::string FormatTable(const std::vector<ListedApplication>& applications, bool why = false);

/// Returns an array of objects. An absent value is null.
std::string FormatJson(const std::vector<ListedApplication>& applications, bool why = false);

/// Returns RFC 4180 with a header line; every line ends with CR and LF. An absent value is empty;
/// the names are a JSON object.
std::string FormatCsv(const std::vector<ListedApplication>& applications, bool why = false);

}  // namespace applist::sim
