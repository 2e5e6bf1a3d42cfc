// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

/// A message catalogue that contains every id of capitals, digits and underscores. Linking it
/// provides i18n_get_text().
namespace applist::test {

/// The text that i18n_get_text() returns for an id. It differs from the id.
inline std::string TranslationOf(const std::string& messageId) {
    return "translated(" + messageId + ")";
}

}  // namespace applist::test
