// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/TemporaryDir.h"

#include <cstdlib>
#include <string>
#include <system_error>

namespace applist::test {

TemporaryDir::TemporaryDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "applist-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) {
        std::abort();
    }
    m_path = pattern;
}

TemporaryDir::~TemporaryDir() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

}  // namespace applist::test
