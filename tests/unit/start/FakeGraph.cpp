// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/start/FakeGraph.h"

#include <cstdlib>
#include <new>

#include "applist/AppList.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "applist/LocalAppListModel.h"

using applist::test::Graph;

namespace applist::test {
namespace {

int g_watchers = 0;
// The youngest block of an AppList's size, and the one that turned out to hold the AppList.
const void* g_youngest = nullptr;
const void* g_list = nullptr;

void Note(const char* event) {
    Graph().events.emplace_back(event);
}

void NoteAllocation(void* memory, size_t size) {
    if (size == sizeof(AppList)) {
        g_youngest = memory;
    }
}

void NoteRelease(const void* memory) {
    if (g_watchers > 0 && memory != nullptr && memory == g_list) {
        g_list = nullptr;
        Note("delete list");
    }
}

}  // namespace

GraphJournal& Graph() {
    static GraphJournal journal;
    return journal;
}

WatchListMemory::WatchListMemory() {
    ++g_watchers;
}
WatchListMemory::~WatchListMemory() {
    --g_watchers;
}

}  // namespace applist::test

// Memory is watched, because an AppList has nothing to destroy that could tell of its end.
void* operator new(size_t size) {
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        std::abort();
    }
    applist::test::NoteAllocation(memory, size);
    return memory;
}
void operator delete(void* memory) noexcept {
    applist::test::NoteRelease(memory);
    std::free(memory);
}
void operator delete(void* memory, size_t /*size*/) noexcept {
    operator delete(memory);
}

// --- the default model: the real one's interface, none of its list ---------------------------

DefaultAppListModel::DefaultAppListModel() : m_selection(nullptr), m_emptyItem(nullptr) {
    applist::test::Note("new default model");
    Graph().defaultModel = this;
}
DefaultAppListModel::~DefaultAppListModel() {
    applist::test::Note("delete default model");
}
void DefaultAppListModel::SetSelection(AppListItem* /*item*/) {}
AppListItem* DefaultAppListModel::GetSelection() {
    return nullptr;
}
std::vector<AppListItem*> DefaultAppListModel::GetAllItems() {
    return {};
}
void DefaultAppListModel::SetClicked(AppListItem* /*item*/) {}
void DefaultAppListModel::RemoveAllItems() {}
void DefaultAppListModel::AddItems(const std::vector<AppListItem*>& /*items*/) {}
void DefaultAppListModel::AddItemAtEnd(AppListItem* /*item*/) {}
void DefaultAppListModel::RemoveItem(AppListItem* /*item*/) {}
void DefaultAppListModel::ModifyItem(AppListItem* /*oldItem*/, AppListItem* /*newItem*/) {}
int DefaultAppListModel::GetItemsCount() {
    return 0;
}
void DefaultAppListModel::AddItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemSelectionListener(ItemSelectionListener* /*listener*/) {}
void DefaultAppListModel::AddItemChangeListener(ItemChangeListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemChangeListener(ItemChangeListener* /*listener*/) {}
void DefaultAppListModel::AddItemClickedListener(ItemClickListener* /*listener*/) {}
void DefaultAppListModel::RemoveItemClickedListener(ItemClickListener* /*listener*/) {}

// --- the renderer and the control -------------------------------------------------------------

DefaultAppListRenderer::DefaultAppListRenderer(const std::string& name)
    : m_name(name), m_focusOpening([] {}), m_keyPress([] {}) {
    applist::test::Note("new renderer");
    Graph().rendererGot = name;
}
DefaultAppListRenderer::~DefaultAppListRenderer() {
    applist::test::Note("delete renderer");
}
void DefaultAppListRenderer::SetModel(AppListModel* model) {
    applist::test::g_list = applist::test::g_youngest;  // Called by the AppList just allocated.
    applist::test::Note("renderer SetModel");
    Graph().rendererModel = model;
}
void DefaultAppListRenderer::ItemSelected(AppListModel* /*model*/) {}
void DefaultAppListRenderer::ItemChanged(AppListModel* /*model*/) {}

DefaultAppListControl::DefaultAppListControl() {
    applist::test::Note("new control");
}
DefaultAppListControl::~DefaultAppListControl() {
    applist::test::Note("delete control");
}
void DefaultAppListControl::SetModel(AppListModel* model) {
    applist::test::Note("control SetModel");
    Graph().controlModel = model;
}
void DefaultAppListControl::ItemSelected(AppListModel* /*model*/) {}
