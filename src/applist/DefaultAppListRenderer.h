// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <map>
#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "applist/AppListRenderer.h"

// The toolkit's own names, so that whoever only creates a renderer need not include the toolkit.
typedef struct _Eo_Opaque Evas_Object;
typedef struct _Eo_Opaque Elm_Object_Item;
typedef struct _Elm_Gen_Item_Class Elm_Genlist_Item_Class;

/// Carries the viewer's moves up into the model, except while the renderer itself moves the focus
/// because the model changed: without that the two would echo each other.
class SelectionPropagator {
public:
    /// Neither is owned. listener is the one that need not hear of the moves made here.
    SelectionPropagator(AppListModel* model, ItemSelectionListener* listener)
        : m_model(model), m_listener(listener) {}

    /// Selects item in the model unless suppressed. The listener does not hear of it and stands
    /// last among the model's selection listeners afterwards.
    void SetSelection(AppListItem* item);

    bool Suppressed() const { return m_suppressed; }

    /// Nothing is propagated while one of these lives.
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

/// The list on the screen: a transparent full-screen window, a popup with a title and a genlist
/// with a row for each item of the model.
///
/// A change of the model brings the rows in line and moves the focus to the selected one; a focus
/// that the viewer moved becomes the model's selection, and a row that the viewer activates is
/// reported as clicked and ends the application. Rows point at the model's items: an item must
/// live until the change that takes it off the list was announced. Main thread only, with the
/// toolkit running.
class DefaultAppListRenderer : public AppListRenderer,
                               public ItemSelectionListener,
                               public ItemChangeListener {
public:
    /// Builds and shows the empty list; name is the window's name and title. Where no window can
    /// be had that is logged, and the renderer shows nothing.
    explicit DefaultAppListRenderer(const std::string& name);
    ~DefaultAppListRenderer() override;
    DefaultAppListRenderer(const DefaultAppListRenderer&) = delete;
    DefaultAppListRenderer& operator=(const DefaultAppListRenderer&) = delete;
    DefaultAppListRenderer(DefaultAppListRenderer&&) = delete;
    DefaultAppListRenderer& operator=(DefaultAppListRenderer&&) = delete;

    /// Listens to the model. The list stays empty until the model's next change.
    void SetModel(AppListModel* model) override;
    void ItemSelected(AppListModel* model) override;
    void ItemChanged(AppListModel* model) override;

    /// What the toolkit calls, with the renderer as data and the row as event_info; for the label
    /// the item is the data, and the result is the caller's to free.
    static char* ItemLabelGetFunction(void* data, Evas_Object* obj, const char* part);
    static void OnFocus(void* data, Evas_Object* obj, void* event_info);
    static void OnRealized(void* data, Evas_Object* obj, void* event_info);
    static void ItemSelectEvent(void* data, Evas_Object* obj, void* event_info);

protected:
    using Row = Elm_Object_Item;
    using RowsById = std::map<std::string, Row*>;

    /// Builds everything; false when there is no window, in which case nothing else is built.
    bool Create();
    /// The shown, empty window, or null. The renderer owns it.
    Evas_Object* CreateWindow(const char* name);
    /// The popup inside parent, with the genlist in it; both go with parent.
    Evas_Object* AddPopupWindow(Evas_Object* parent);
    /// A table on parent that holds obj and is never smaller than w by h pixels.
    static Evas_Object* WidgetMinSet(Evas_Object* obj, Evas_Object* parent, int w, int h);
    /// The class of all rows; the caller frees it.
    static Elm_Genlist_Item_Class* CreateItemClass();

    /// Brings the rows in line with items and gives the row of selection the focus. Rows of items
    /// that were there before stay where they are, with the label that they have.
    void AddItems(const std::vector<AppListItem*>& items, AppListItem* selection);
    /// Gives the row with the item's id the focus.
    void ChangeSelection(AppListItem* item);

    Evas_Object* m_window = nullptr;
    Evas_Object* m_background = nullptr;
    Elm_Genlist_Item_Class* m_itemClass = nullptr;
    Evas_Object* m_genlist = nullptr;
    std::string m_name;
    AppListModel* m_model = nullptr;
    SelectionPropagator* m_selectionPropagator = nullptr;
    /// The row that is to carry the focus. Compared with living rows, never followed: after the
    /// list was cleared it still names a row that is gone.
    Row* m_focusItem = nullptr;

private:
    void OnFocus(Row* row);
    void OnRealized(Row* row);
    void ItemSelectEvent(Row* row);

    /// Points m_focusItem at the last row with target's id, null where there is none. Returns the
    /// row that has the focus; rows, where given, receives every row.
    Row* ScanRows(AppListItem* target, RowsById* rows);
    /// Takes the items' ids out of rows, and inserts a row for each id that is not in it.
    void PlaceItems(const std::vector<AppListItem*>& items, AppListItem* selection, RowsById& rows);
    /// A new row behind anchor; at the front of the list where anchor is null.
    Row* InsertRow(AppListItem* item, Row* anchor);
    /// focused, which may be among the rows, has the focus.
    void DeleteRows(const RowsById& rows, const Row* focused);
    void ClearRows();
    /// Tells the platform which row is to keep the focus, if there is one.
    void KeepFocus();
    void MoveFocusFrom(const Row* lost);
    void FocusTarget();
};
