// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace applist::sim {

/// All codes of ISO 639 for the language that one of them stands for: "it" or "ita" gives both,
/// "fre" gives "fr", "fra" and "fre". An unknown code stands for itself.
std::vector<std::string> LanguageCodes(std::string_view language);

}  // namespace applist::sim
