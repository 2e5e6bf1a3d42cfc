// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::test {

/// Where a file of the source tree is, such as "docs/protocol.md".
std::string SourcePath(const std::string& path);

/// The content of such a file. One that is not there fails the running test and is taken for empty.
std::string SourceFile(const std::string& path);

}  // namespace applist::test
