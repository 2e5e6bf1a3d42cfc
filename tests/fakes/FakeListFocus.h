// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <utility>
#include <vector>

#include "list_focus.h"

/// Rows that were to have the focus, as a history. Linking it provides list_focus_set().
namespace applist::test {

/// Every list and row so far, oldest first; tests clear it to start afresh.
std::vector<std::pair<Evas_Object*, Elm_Object_Item*>>& FocusedRows();

}  // namespace applist::test
