// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/SourceFile.h"

#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace applist::test {

std::string SourcePath(const std::string& path) {
    const char* tree = std::getenv("APPLIST_SOURCE");
    return (tree != nullptr ? std::string(tree) : ".") + "/" + path;
}

std::string SourceFile(const std::string& path) {
    std::ifstream file(SourcePath(path));
    EXPECT_TRUE(file.is_open()) << "no " << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace applist::test
