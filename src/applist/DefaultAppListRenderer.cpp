// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/DefaultAppListRenderer.h"

#include <Elementary.h>
#include <cstring>

#include "CallbackGuard.h"
#include "Log.h"
#include "app.h"
#include "i18n_text.h"
#include "list_focus.h"
#include "winset.h"

// A macro, so that the line number in the log is the caller's.
#define LOG_ITEM(text, item)                                                      \
    LOG_DEBUG(text "[name: %s, unique id: %s]", (item)->GetVisibleName().c_str(), \
              (item)->GetUnigueId().c_str())

using applist::GuardCallback;

namespace {

constexpr int WINDOW_WIDTH = 1920;
constexpr int WINDOW_HEIGHT = 1080;
constexpr int LIST_MIN_WIDTH = 300;
constexpr int LIST_MIN_HEIGHT = 425;
// The number of the set theme's popup variant for lists.
constexpr int WINSET_LIST_POPUP = 220;

int Scaled(int length) {
    return static_cast<int>(length * elm_config_scale_get());
}

void SetExpand(Evas_Object* object) {
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
}

void SetFill(Evas_Object* object) {
    evas_object_size_hint_align_set(object, EVAS_HINT_FILL, EVAS_HINT_FILL);
}

void SetWindowProperties(Evas_Object* window, const char* name) {
    elm_win_title_set(window, name);
    elm_win_alpha_set(window, EINA_TRUE);
    elm_win_prop_focus_skip_set(window, EINA_FALSE);
    // The theme draws the focus in the row. The toolkit tells the theme which row has the focus
    // only if its own highlight is enabled, so the highlight is enabled and invisible.
    elm_win_focus_highlight_style_set(window, "invisible");
    elm_win_focus_highlight_enabled_set(window, EINA_TRUE);
    elm_win_fullscreen_set(window, EINA_TRUE);
}

// The background is transparent, so that the broadcast is visible; it only resizes with the window.
void PlaceBackground(Evas_Object* background, Evas_Object* window) {
    evas_object_color_set(background, 0, 0, 0, 0);
    SetExpand(background);
    elm_win_resize_object_add(window, background);
    evas_object_show(background);
}

AppListItem* ItemOf(const Elm_Object_Item* row) {
    return static_cast<AppListItem*>(elm_object_item_data_get(row));
}

// Removes a selection listener from its model while it exists. Also adds the listener again if an
// exception occurs, because it must receive later changes.
class ListenerRemoval {
public:
    ListenerRemoval(AppListModel& model, ItemSelectionListener* listener)
        : m_model(model), m_listener(listener) {
        m_model.RemoveItemSelectionListener(m_listener);
    }
    ~ListenerRemoval() { m_model.AddItemSelectionListener(m_listener); }
    ListenerRemoval(const ListenerRemoval&) = delete;
    ListenerRemoval& operator=(const ListenerRemoval&) = delete;
    ListenerRemoval(ListenerRemoval&&) = delete;
    ListenerRemoval& operator=(ListenerRemoval&&) = delete;

private:
    AppListModel& m_model;
    ItemSelectionListener* m_listener;
};

// Returns the item of a row that the toolkit reports. Logs noRow or noItem and returns null if the
// row or its item is null.
AppListItem* ReportedItemOf(const Elm_Object_Item* row, const char* noRow, const char* noItem) {
    if (row == nullptr) {
        LOG_ERROR("%s", noRow);
        return nullptr;
    }
    AppListItem* item = ItemOf(row);
    if (item == nullptr) {
        LOG_ERROR("%s", noItem);
    }
    return item;
}

}  // namespace

void SelectionPropagator::SetSelection(AppListItem* item) {
    if (m_suppressed) {
        LOG_DEBUG("Do not propagate event up to data model");
        return;
    }
    LOG_DEBUG("Propagate event up to data model");
    // The listener has caused this change, so it must not be called for it.
    const ListenerRemoval removal(*m_model, m_listener);
    m_model->SetSelection(item);
}

DefaultAppListRenderer::DefaultAppListRenderer(const std::string& name) : m_name(name) {
    static_cast<void>(Create());
}

DefaultAppListRenderer::~DefaultAppListRenderer() {
    if (m_window != nullptr) {
        evas_object_del(m_window);
    }
    if (m_model != nullptr) {
        m_model->RemoveItemSelectionListener(this);
        m_model->RemoveItemChangeListener(this);
    }
    // The genlist is already deleted, so its callbacks no longer use the propagator.
    delete m_selectionPropagator;
    // The window has deleted it already; the toolkit ignores the second request.
    if (m_background != nullptr) {
        evas_object_del(m_background);
    }
    if (m_itemClass != nullptr) {
        elm_genlist_item_class_free(m_itemClass);
    }
}

bool DefaultAppListRenderer::Create() {
    m_window = CreateWindow(m_name.c_str());
    if (m_window == nullptr) {
        LOG_ERROR("add m_window failed");
        return false;
    }
    evas_object_show(AddPopupWindow(m_window));
    // Before the first row: the toolkit refers to the class and does not copy it.
    m_itemClass = CreateItemClass();
    // The list starts without rows; see list_focus.h.
    list_focus_set(m_genlist, nullptr);
    return true;
}

Evas_Object* DefaultAppListRenderer::CreateWindow(const char* name) {
    elm_config_focus_highlight_animate_set(EINA_TRUE);
    // Null unless the platform has prepared a window, which saves the time to create one.
    Evas_Object* window = app_get_preinitialized_window(name);
    if (window == nullptr) {
        window = elm_win_add(nullptr, name, ELM_WIN_DIALOG_BASIC);
    }
    if (window == nullptr) {
        LOG_ERROR("create window failed");
        return nullptr;
    }
    SetWindowProperties(window, name);

    m_background = elm_bg_add(window);
    if (m_background == nullptr) {
        // The window is not visible yet. The toolkit deletes it when it shuts down.
        LOG_ERROR("Creating background failed. Exiting...");
        return nullptr;
    }
    PlaceBackground(m_background, window);
    const int left = Scaled(0);
    const int top = Scaled(0);
    evas_object_move(window, left, top);
    evas_object_resize(window, WINDOW_WIDTH, WINDOW_HEIGHT);
    evas_object_show(window);
    return window;
}

Evas_Object* DefaultAppListRenderer::AddPopupWindow(Evas_Object* parent) {
    Evas_Object* popup = elm_popup_add(parent);
    elm_object_style_set(popup, "default");
    edje_object_message_send_to_winset(popup, WINSET_LIST_POPUP);
    elm_object_part_text_set(popup, "title,text", i18n_get_text("TV_DATA_SERVICE_LIST"));
    SetExpand(popup);
    SetFill(popup);
    const double scale = elm_config_scale_get();

    m_genlist = elm_genlist_add(popup);
    elm_object_scroll_item_loop_enabled_set(m_genlist, EINA_TRUE);
    evas_object_smart_callback_add(m_genlist, "item,focused", OnFocus, this);
    evas_object_smart_callback_add(m_genlist, "realized", OnRealized, this);
    evas_object_show(m_genlist);

    Evas_Object* table = WidgetMinSet(m_genlist, popup, static_cast<int>(LIST_MIN_WIDTH * scale),
                                      static_cast<int>(LIST_MIN_HEIGHT * scale));
    // The list may grow in height but must not widen the popup.
    evas_object_size_hint_weight_set(table, 0.0, EVAS_HINT_EXPAND);
    SetFill(table);
    evas_object_show(table);
    elm_object_part_content_set(popup, nullptr, table);
    evas_object_show(popup);
    return popup;
}

Evas_Object* DefaultAppListRenderer::WidgetMinSet(Evas_Object* obj, Evas_Object* parent, int w,
                                                  int h) {
    Evas_Object* table = elm_table_add(parent);
    // Invisible: it shares the cell with the widget and enforces the minimum size.
    Evas_Object* rectangle = evas_object_rectangle_add(evas_object_evas_get(table));
    evas_object_size_hint_min_set(rectangle, w, h);
    SetExpand(rectangle);
    SetFill(rectangle);
    elm_table_pack(table, rectangle, 0, 0, 1, 1);

    SetExpand(obj);
    SetFill(obj);
    elm_table_pack(table, obj, 0, 0, 1, 1);
    return table;
}

Elm_Genlist_Item_Class* DefaultAppListRenderer::CreateItemClass() {
    Elm_Genlist_Item_Class* itemClass = elm_genlist_item_class_new();
    if (itemClass == nullptr) {
        // The toolkit does not add rows without a class, so the list stays empty.
        LOG_ERROR("create item class failed");
        return nullptr;
    }
    itemClass->item_style = "1text_left_styleA";
    itemClass->func.text_get = ItemLabelGetFunction;
    itemClass->func.content_get = nullptr;
    itemClass->func.state_get = nullptr;
    // The rows do not own the items, so there is nothing to delete with a row.
    itemClass->func.del = nullptr;
    return itemClass;
}

void DefaultAppListRenderer::SetModel(AppListModel* model) {
    m_model = model;
    // Before the registration, because both listener functions use it.
    m_selectionPropagator = new SelectionPropagator(model, this);
    m_model->AddItemSelectionListener(this);
    m_model->AddItemChangeListener(this);
}

void DefaultAppListRenderer::ItemSelected(AppListModel* /*model*/) {
    LOG_DEBUG("Received item selection event");
    SelectionPropagator::Suppression suppression(*m_selectionPropagator);
    ChangeSelection(m_model->GetSelection());
}

void DefaultAppListRenderer::ItemChanged(AppListModel* /*model*/) {
    LOG_DEBUG("Received item modification event");
    // The toolkit moves its focus while rows come and go, which is not a choice of the viewer.
    SelectionPropagator::Suppression suppression(*m_selectionPropagator);
    const std::vector<AppListItem*> items = m_model->GetAllItems();
    AddItems(items, m_model->GetSelection());
}

void DefaultAppListRenderer::ChangeSelection(AppListItem* item) {
    MoveFocusFrom(ScanRows(item, nullptr));
    KeepFocus();
}

void DefaultAppListRenderer::AddItems(const std::vector<AppListItem*>& items,
                                      AppListItem* selection) {
    if (items.empty()) {
        LOG_DEBUG("Clearing applist");
        ClearRows();
        return;
    }
    RowsById rows;
    const Row* lost = ScanRows(selection, &rows);
    LOG_DEBUG("Number of items to print: %d", static_cast<int>(items.size()));
    // Removes the listed items from rows; the rows that are left belong to items that are gone.
    PlaceItems(items, selection, rows);
    DeleteRows(rows, lost);
    MoveFocusFrom(lost);
    KeepFocus();
}

DefaultAppListRenderer::Row* DefaultAppListRenderer::ScanRows(AppListItem* target, RowsById* rows) {
    // One pass for all three results, because a list may have hundreds of rows.
    m_focusItem = nullptr;
    Row* focused = nullptr;
    for (Row* row = elm_genlist_first_item_get(m_genlist); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        AppListItem* item = ItemOf(row);
        LOG_ITEM("applist element data is: ", item);
        if (elm_object_item_focus_get(row) != EINA_FALSE) {
            LOG_ITEM("Found applist element that will lost focus: ", item);
            focused = row;
        }
        if (ApplistItemComparator(target)(item)) {
            LOG_ITEM("Found next focus applist element: ", target);
            m_focusItem = row;
        }
        if (rows != nullptr) {
            (*rows)[item->GetUnigueId()] = row;
        }
    }
    return focused;
}

void DefaultAppListRenderer::PlaceItems(const std::vector<AppListItem*>& items,
                                        AppListItem* selection, RowsById& rows) {
    Row* anchor = nullptr;
    for (AppListItem* item : items) {
        const auto known = rows.find(item->GetUnigueId());
        if (known != rows.end()) {
            // anchor is the row of the preceding item, so that new rows follow the order of items.
            anchor = known->second;
            rows.erase(known);
            continue;
        }
        LOG_ITEM("Menu item append started. Item that is being to print: ", item);
        anchor = InsertRow(item, anchor);
        LOG_DEBUG("Menu item append finished");
        if (ApplistItemComparator(selection)(item)) {
            LOG_ITEM("Found newly added applist element that will have focus: ", selection);
            m_focusItem = anchor;
        }
    }
}

DefaultAppListRenderer::Row* DefaultAppListRenderer::InsertRow(AppListItem* item, Row* anchor) {
    if (anchor != nullptr) {
        return elm_genlist_item_insert_after(m_genlist, m_itemClass, item, nullptr, anchor,
                                             ELM_GENLIST_ITEM_NONE, ItemSelectEvent, this);
    }
    // New items in front of all known ones go before the first row.
    if (Row* first = elm_genlist_first_item_get(m_genlist)) {
        return elm_genlist_item_insert_before(m_genlist, m_itemClass, item, nullptr, first,
                                              ELM_GENLIST_ITEM_NONE, ItemSelectEvent, this);
    }
    return elm_genlist_item_append(m_genlist, m_itemClass, item, nullptr, ELM_GENLIST_ITEM_NONE,
                                   ItemSelectEvent, this);
}

void DefaultAppListRenderer::DeleteRows(const RowsById& rows, const Row* focused) {
    LOG_DEBUG("Number of items to be removed from list is: %d", static_cast<int>(rows.size()));
    for (const auto& [id, row] : rows) {
        LOG_DEBUG("Removing item [unique id: %s]", id.c_str());
        if (row == m_focusItem) {
            // The selected item is no longer listed, so a row to focus does not exist.
            m_focusItem = nullptr;
        }
        if (row == focused) {
            // The toolkit would move the focus to another row while it deletes this one.
            KeepFocus();
        }
        elm_object_item_del(row);
    }
}

void DefaultAppListRenderer::ClearRows() {
    // Null if the window could not be created; list_focus_set() needs a list.
    if (m_genlist != nullptr) {
        list_focus_set(m_genlist, nullptr);
    }
    elm_genlist_clear(m_genlist);
}

void DefaultAppListRenderer::KeepFocus() {
    if (m_focusItem != nullptr) {
        list_focus_set(m_genlist, m_focusItem);
    }
}

void DefaultAppListRenderer::MoveFocusFrom(const Row* lost) {
    if (m_focusItem == lost) {
        return;
    }
    LOG_DEBUG("Moved focus to other applist element");
    if (m_focusItem != nullptr) {
        FocusTarget();
    }
}

void DefaultAppListRenderer::FocusTarget() {
    elm_genlist_item_bring_in(m_focusItem, ELM_GENLIST_ITEM_SCROLLTO_IN);
    // If the row is not laid out yet, the toolkit may ignore this; OnRealized() then repeats it.
    elm_object_item_focus_set(m_focusItem, EINA_TRUE);
}

char* DefaultAppListRenderer::ItemLabelGetFunction(void* data, Evas_Object* /*obj*/,
                                                   const char* part) {
    if (data == nullptr) {
        LOG_ERROR("Item data is NULL");
        return nullptr;
    }
    if (std::strcmp(part, "elm.text") != 0) {
        return nullptr;
    }
    return GuardCallback<char*>(nullptr, [data] {
        // The toolkit frees the label with free().
        return strdup(static_cast<AppListItem*>(data)->GetVisibleName().c_str());
    });
}

void DefaultAppListRenderer::OnFocus(void* data, Evas_Object* /*obj*/, void* event_info) {
    GuardCallback([data, event_info] {
        static_cast<DefaultAppListRenderer*>(data)->OnFocus(static_cast<Row*>(event_info));
    });
}

void DefaultAppListRenderer::OnFocus(Row* row) {
    AppListItem* item = ReportedItemOf(row, "Focused item is NULL", "Data of focused item is NULL");
    if (item == nullptr) {
        return;
    }
    LOG_ITEM("Calling smart selection propagate: ", item);
    m_selectionPropagator->SetSelection(item);
    if (!m_selectionPropagator->Suppressed()) {
        // The viewer has moved the focus. The row that the model selected before must not take it
        // back when it scrolls out of view and back.
        m_focusItem = nullptr;
    }
}

void DefaultAppListRenderer::OnRealized(void* data, Evas_Object* /*obj*/, void* event_info) {
    GuardCallback([data, event_info] {
        static_cast<DefaultAppListRenderer*>(data)->OnRealized(static_cast<Row*>(event_info));
    });
}

void DefaultAppListRenderer::OnRealized(Row* row) {
    AppListItem* item =
        ReportedItemOf(row, "Realized item is NULL", "Data of realized item is NULL");
    if (item == nullptr) {
        return;
    }
    LOG_ITEM("Realized Item is: ", item);
    if (m_focusItem == row) {
        LOG_ITEM("Moving focus to ", item);
        FocusTarget();
    }
}

void DefaultAppListRenderer::ItemSelectEvent(void* data, Evas_Object* /*obj*/, void* event_info) {
    GuardCallback([data, event_info] {
        static_cast<DefaultAppListRenderer*>(data)->ItemSelectEvent(static_cast<Row*>(event_info));
    });
}

void DefaultAppListRenderer::ItemSelectEvent(Row* row) {
    AppListItem* item =
        ReportedItemOf(row, "Selected item is NULL", "Data of selected item is NULL");
    if (item == nullptr) {
        return;
    }
    LOG_ITEM("select item callback: item: ", item);
    m_model->SetClicked(item);
    LOG_DEBUG("Exit efl main loop");
    ui_app_exit();
}
