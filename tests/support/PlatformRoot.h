// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include "support/TemporaryDir.h"

namespace applist::test {

/// A private set for this process: APPLIST_PLATFORM_ROOT names a new folder.
class PlatformRoot {
public:
    PlatformRoot() { setenv("APPLIST_PLATFORM_ROOT", m_dir.path().c_str(), 1); }
    ~PlatformRoot() { unsetenv("APPLIST_PLATFORM_ROOT"); }
    PlatformRoot(const PlatformRoot&) = delete;
    PlatformRoot& operator=(const PlatformRoot&) = delete;
    PlatformRoot(PlatformRoot&&) = delete;
    PlatformRoot& operator=(PlatformRoot&&) = delete;

    std::string Path(const std::string& name) const { return m_dir.path() / name; }
    /// Writes text into the file called name, as a user does with an editor.
    void Write(const std::string& name, const std::string& text) const {
        std::filesystem::create_directories(std::filesystem::path(Path(name)).parent_path());
        std::ofstream(Path(name), std::ios::binary) << text;
    }
    /// The bytes of the file called name; empty if the file does not exist.
    std::string Content(const std::string& name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

private:
    TemporaryDir m_dir;
};

}  // namespace applist::test
