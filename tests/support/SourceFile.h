// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::test {

/// The path of a file in the source tree, such as "docs/protocol.md".
std::string SourcePath(const std::string& path);

/// The content of such a file. A missing file fails the running test and counts as empty.
std::string SourceFile(const std::string& path);

}  // namespace applist::test
