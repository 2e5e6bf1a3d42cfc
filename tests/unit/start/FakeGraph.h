// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

class AppList;
class AppListControl;
class AppListModel;
class AppListRenderer;

/// Replaces the classes of the list's object graph: the same declarations with function bodies that
/// only record constructor arguments and deletions.
namespace applist::test {

/// The constructions and deletions of the object graph, in order.
struct GraphJournal {
    std::vector<std::string> events;
    // The models created last.
    const AppListModel* defaultModel = nullptr;
    const AppListModel* localModel = nullptr;
    // The list created last; null once its memory is freed. The class does not declare a destructor
    // that a fake could replace, so a test that needs its deletion watches the memory.
    const AppList* list = nullptr;
    // The constructor arguments of the objects.
    const AppListModel* localModelGot = nullptr;
    std::string rendererGot;
    const AppListModel* listModel = nullptr;
    const AppListRenderer* listRenderer = nullptr;
    const AppListControl* listControl = nullptr;
    // The views created last.
    const AppListRenderer* renderer = nullptr;
    const AppListControl* control = nullptr;
    /// Set by a test: the memory runs out while the control is created.
    bool controlThrows = false;
};

/// The one journal of the process; tests assign GraphJournal{} to reset it.
GraphJournal& Graph();

}  // namespace applist::test
