// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

/// Records the renderer's toolkit calls in order. Each call is passed on to the toolkit, so that
/// the widgets are real.
namespace applist::test {

/// Returns the calls as source text, such as "elm_bg_add(window)". Objects are named by their
/// maker. Rows are named after their item: "row a".
std::vector<std::string>& ToolkitCalls();

/// Returns only the calls of the named functions.
std::vector<std::string> ToolkitCallsOf(const std::vector<std::string>& functions);

/// Makes the next call of the function fail: it creates nothing and returns null.
void FailNext(const std::string& function);

}  // namespace applist::test
