// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>

namespace applist::test {

/// A new empty folder, removed with all its content at the end.
class TemporaryDir {
public:
    TemporaryDir() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "applist-test-XXXXXX").string();
        if (mkdtemp(pattern.data()) == nullptr) {
            std::abort();
        }
        m_path = pattern;
    }
    ~TemporaryDir() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TemporaryDir(const TemporaryDir&) = delete;
    TemporaryDir& operator=(const TemporaryDir&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

}  // namespace applist::test
