// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include <nlohmann/json_fwd.hpp>

namespace applist::tools {

/// A JSON value whose members keep their order.
using Json = nlohmann::ordered_json;

/// Returns value on one line. Invalid UTF-8 is replaced with replacement characters.
std::string JsonLine(const Json& value);

/// Returns value with indentation and a final line end; invalid UTF-8 is replaced.
std::string JsonText(const Json& value);

}  // namespace applist::tools
