// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::test {

/// The content of a file of the source tree, such as "docs/protocol.md". One that is not there
/// fails the running test and is taken for empty.
std::string SourceFile(const std::string& path);

}  // namespace applist::test
