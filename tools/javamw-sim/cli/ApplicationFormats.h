// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include "feed/ApplicationList.h"

namespace applist::sim {

/// What the columns of a table, the keys in JSON and the head of CSV are called.
const std::vector<std::string>& ApplicationFields();

/// A table for people, the columns under a head line. What the source does not say is "-".
std::string FormatTable(const std::vector<ListedApplication>& applications);

/// An array of objects. What the source does not say is null.
std::string FormatJson(const std::vector<ListedApplication>& applications);

/// RFC 4180 with a head line, so every line ends with CR and LF. What the source does not say is
/// empty; names are a JSON object.
std::string FormatCsv(const std::vector<ListedApplication>& applications);

}  // namespace applist::sim
