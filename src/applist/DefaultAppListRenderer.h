// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "applist/AppListRenderer.h"

// Forward declarations of the toolkit's types, so that users of this header need not include the
// toolkit.
typedef struct _Eo_Opaque Evas_Object;
typedef struct _Eo_Opaque Elm_Object_Item;
typedef struct _Elm_Gen_Item_Class Elm_Genlist_Item_Class;

/// Forwards the viewer's focus moves to the model. Suppressed while the renderer moves the focus
/// because of a change of the model, because that change must not be sent back to the model.
class SelectionPropagator {
public:
    /// Does not own the arguments. listener is not called for changes made by this object.
    SelectionPropagator(AppListModel* model, ItemSelectionListener* listener)
        : m_model(model), m_listener(listener) {}

    /// Selects item in the model unless suppressed. Removes the constructor's listener from the
    /// model during the call, so that it is not called. Adding it again, also after an
    /// exception, makes it the model's last selection listener.
    void SetSelection(AppListItem* item);

    bool Suppressed() const { return m_suppressed; }

    /// Suppresses the propagation while it exists.
    class [[nodiscard]] Suppression {
    public:
        explicit Suppression(SelectionPropagator& propagator) : m_propagator(propagator) {
            m_propagator.m_suppressed = true;
        }
        ~Suppression() { m_propagator.m_suppressed = false; }
        Suppression(const Suppression&) = delete;
        Suppression& operator=(const Suppression&) = delete;
        Suppression(Suppression&&) = delete;
        Suppression& operator=(Suppression&&) = delete;

    private:
        SelectionPropagator& m_propagator;
    };

private:
    AppListModel* m_model;
    ItemSelectionListener* m_listener;
    bool m_suppressed = false;
};

/// Shows the list: a transparent full-screen window, a popup with a title and a genlist with one
/// row per item of the model.
///
/// If the model changes, updates the rows and focuses the selected one. If the viewer moves the
/// focus, updates the model's selection. If the viewer activates a row, reports its item as clicked
/// and ends the application. Rows refer to the model's items: an item must stay valid until the
/// change that removes it has been announced. Main thread only, while the toolkit is running.
class DefaultAppListRenderer : public AppListRenderer,
                               public ItemSelectionListener,
                               public ItemChangeListener {
public:
    /// Creates and shows the empty list; name is the window's name and title. If the window cannot
    /// be created, an error is logged and the renderer does not show anything.
    explicit DefaultAppListRenderer(const std::string& name);
    ~DefaultAppListRenderer() override;
    DefaultAppListRenderer(const DefaultAppListRenderer&) = delete;
    DefaultAppListRenderer& operator=(const DefaultAppListRenderer&) = delete;
    DefaultAppListRenderer(DefaultAppListRenderer&&) = delete;
    DefaultAppListRenderer& operator=(DefaultAppListRenderer&&) = delete;

    /// Starts to listen to the model. The list stays empty until the model's next change.
    void SetModel(AppListModel* model) override;
    void ItemSelected(AppListModel* model) override;
    void ItemChanged(AppListModel* model) override;

    /// Callbacks for the toolkit: data is the renderer and event_info the row. For the label
    /// function data is the item, and the caller frees the result.
    static char* ItemLabelGetFunction(void* data, Evas_Object* obj, const char* part);
    static void OnFocus(void* data, Evas_Object* obj, void* event_info);
    static void OnRealized(void* data, Evas_Object* obj, void* event_info);
    static void ItemSelectEvent(void* data, Evas_Object* obj, void* event_info);

protected:
    // Not private, so that tests can call these functions and check the widgets.

    using Row = Elm_Object_Item;
    using RowsById = std::map<std::string, Row*>;

    /// Creates all objects. Returns false if the window cannot be created; nothing else is created
    /// then.
    bool Create();
    /// Creates and shows the empty window. The renderer owns the result, which may be null.
    Evas_Object* CreateWindow(const char* name);
    /// Creates the popup in parent, with the genlist in it. parent owns both.
    Evas_Object* AddPopupWindow(Evas_Object* parent);
    /// Returns a table in parent that contains obj and has a minimum size of w by h pixels.
    static Evas_Object* WidgetMinSet(Evas_Object* obj, Evas_Object* parent, int w, int h);
    /// Returns the class of all rows; the caller frees it.
    static Elm_Genlist_Item_Class* CreateItemClass();

    /// Updates the rows to match items and focuses the row of selection. Rows of items that were
    /// listed before keep their place and label.
    void AddItems(const std::vector<AppListItem*>& items, AppListItem* selection);
    /// Focuses the row with the item's id.
    void ChangeSelection(AppListItem* item);

    Evas_Object* m_window = nullptr;
    Evas_Object* m_background = nullptr;
    Elm_Genlist_Item_Class* m_itemClass = nullptr;
    Evas_Object* m_genlist = nullptr;
    std::string m_name;
    AppListModel* m_model = nullptr;
    SelectionPropagator* m_selectionPropagator = nullptr;
    /// The row that is to get the focus. Only compared with existing rows and never dereferenced
    /// otherwise, because it is not reset when the list is cleared.
    Row* m_focusItem = nullptr;

private:
    void OnFocus(Row* row);
    void OnRealized(Row* row);
    void ItemSelectEvent(Row* row);

    /// Sets m_focusItem to the last row with target's id, or to null if there is none. Returns the
    /// row that has the focus, or null. If rows is not null, adds every row to it.
    Row* ScanRows(AppListItem* target, RowsById* rows);
    /// Removes the items' ids from rows and inserts a row for each item whose id is not in it.
    void PlaceItems(const std::vector<AppListItem*>& items, AppListItem* selection, RowsById& rows);
    /// Inserts a row after anchor, or at the front of the list if anchor is null.
    Row* InsertRow(AppListItem* item, Row* anchor);
    /// Deletes the rows. focused is the row that has the focus and may be one of them.
    void DeleteRows(const RowsById& rows, const Row* focused);
    void ClearRows();
    /// Asks the platform to keep the focus on m_focusItem, if it is set.
    void KeepFocus();
    void MoveFocusFrom(const Row* lost);
    void FocusTarget();
};
