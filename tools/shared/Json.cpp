// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/Json.h"

#include <nlohmann/json.hpp>

namespace applist::tools {
namespace {

std::string Dump(const Json& value, int indentation) {
    // Replaces invalid UTF-8, because dump() throws on it by default.
    return value.dump(indentation, ' ', false, Json::error_handler_t::replace);
}

}  // namespace

std::string JsonLine(const Json& value) {
    return Dump(value, -1);
}

std::string JsonText(const Json& value) {
    return Dump(value, 2) + '\n';
}

}  // namespace applist::tools
