// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// The calls that the renderer makes into the toolkit, in their order. Each is noted and then
/// carried out, so that the widgets are real.
namespace applist::test {

/// Calls as they are written, with the objects named after what made them: "elm_bg_add(window)".
/// Rows are named after their item: "row a".
std::vector<std::string>& ToolkitCalls();

/// The named functions' calls alone.
std::vector<std::string> ToolkitCallsOf(const std::vector<std::string>& functions);

/// Makes the next call of the function fail: it creates nothing and returns null.
void FailNext(const std::string& function);

}  // namespace applist::test
