// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <gtest/gtest.h>

namespace applist::test {

/// The path of a file in the source tree, such as "docs/protocol.md".
inline std::string SourcePath(const std::string& path) {
    const char* tree = std::getenv("APPLIST_SOURCE");
    return (tree != nullptr ? std::string(tree) : ".") + "/" + path;
}

/// The content of such a file. A missing file fails the running test and counts as empty.
inline std::string SourceFile(const std::string& path) {
    std::ifstream file(SourcePath(path));
    EXPECT_TRUE(file.is_open()) << "no " << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace applist::test
