// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

class AppListModel;

/// Stand-ins for the classes of the list's object graph: the same declarations, other bodies, which
/// only write down who was built with what and who was deleted when.
namespace applist::test {

struct GraphJournal {
    std::vector<std::string> events;
    // The models built last.
    const AppListModel* defaultModel = nullptr;
    const AppListModel* localModel = nullptr;
    // What the objects were given.
    const AppListModel* localModelGot = nullptr;
    std::string rendererGot;
    const AppListModel* rendererModel = nullptr;
    const AppListModel* controlModel = nullptr;
};

/// The one journal of the process; tests assign GraphJournal{} to start afresh.
GraphJournal& Graph();

/// While one lives, the release of an AppList is written down too. That class has nothing to
/// destroy, so only its memory tells.
class [[nodiscard]] WatchListMemory {
public:
    WatchListMemory();
    ~WatchListMemory();
    WatchListMemory(const WatchListMemory&) = delete;
    WatchListMemory& operator=(const WatchListMemory&) = delete;
    WatchListMemory(WatchListMemory&&) = delete;
    WatchListMemory& operator=(WatchListMemory&&) = delete;
};

}  // namespace applist::test
