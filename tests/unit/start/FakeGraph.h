// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

class AppList;
class AppListControl;
class AppListModel;
class AppListRenderer;

/// Stand-ins for the classes of the list's object graph: the same declarations, other bodies, which
/// only write down who was built with what and who was deleted when.
namespace applist::test {

struct GraphJournal {
    std::vector<std::string> events;
    // The models built last.
    const AppListModel* defaultModel = nullptr;
    const AppListModel* localModel = nullptr;
    // The list built last, until its memory is released. The class has no destructor to fake: a
    // test that needs its deletion watches the memory.
    const AppList* list = nullptr;
    // What the objects were given.
    const AppListModel* localModelGot = nullptr;
    std::string rendererGot;
    const AppListModel* listModel = nullptr;
    const AppListRenderer* listRenderer = nullptr;
    const AppListControl* listControl = nullptr;
    // The views built last.
    const AppListRenderer* renderer = nullptr;
    const AppListControl* control = nullptr;
};

/// The one journal of the process; tests assign GraphJournal{} to start afresh.
GraphJournal& Graph();

}  // namespace applist::test
