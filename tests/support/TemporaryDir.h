// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <filesystem>

namespace applist::test {

/// A new empty folder, removed with all its content at the end.
class TemporaryDir {
public:
    TemporaryDir();
    ~TemporaryDir();
    TemporaryDir(const TemporaryDir&) = delete;
    TemporaryDir& operator=(const TemporaryDir&) = delete;

    const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

}  // namespace applist::test
