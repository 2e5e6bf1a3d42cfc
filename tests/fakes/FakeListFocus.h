// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "list_focus.h"

/// Records the rows that were asked to take the focus. Linking it provides list_focus_set().
namespace applist::test {

/// Every list and row so far, oldest first; tests clear it.
std::vector<std::pair<Evas_Object*, Elm_Object_Item*>>& FocusedRows();

}  // namespace applist::test
