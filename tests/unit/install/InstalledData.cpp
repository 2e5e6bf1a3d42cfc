// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/install/InstalledData.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/ChildProcess.h"

namespace applist::test {

namespace fs = std::filesystem;

void InstalledData::SetUp() {
    ChildProcess install(
        {CMAKE, "-DCMAKE_INSTALL_PREFIX=/usr", "-P", DATA_BINARY_DIR "/cmake_install.cmake"},
        {{"DESTDIR", m_root.path()}});
    ASSERT_EQ(install.WaitForExit(), 0) << install.Errors();
}

std::vector<std::string> InstalledData::FilesNamed(const std::string& part) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(m_root.path())) {
        if (entry.path().filename().string().find(part) != std::string::npos) {
            names.push_back("/" + fs::relative(entry.path(), m_root.path()).string());
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string InstalledData::Content(const std::string& path) const {
    std::ifstream in(m_root.path().string() + path);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace applist::test
