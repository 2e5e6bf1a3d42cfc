// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <vector>

#include "applist/AppListModel.h"

class DefaultAppListRenderer;

/// Replaces DefaultAppListRenderer by a screen without the toolkit: rows that refer to the model's
/// items and one focused row, changed by the same events and kept by the same rules. Notes in the
/// history of FakePlatformLog that the renderer is created and receives its model, and elm_exit().
namespace applist::test {

struct FakeScreen {
    /// The live renderer and its model; null without one.
    DefaultAppListRenderer* renderer = nullptr;
    AppListModel* model = nullptr;
    /// A row keeps its item until a change is announced that does not list the item's id.
    std::vector<AppListItem*> rows;
    /// The row that has the focus; null if none has it.
    AppListItem* focused = nullptr;

    /// The viewer moves the focus to a row, or presses OK on it.
    void MoveFocus(std::size_t row);
    void Activate(std::size_t row) const;
};

/// The one screen of the process; tests assign FakeScreen{} to reset it.
FakeScreen& TheScreen();

}  // namespace applist::test
