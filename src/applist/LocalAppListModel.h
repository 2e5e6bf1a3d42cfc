// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "applist/AppListModel.h"
#include "applist/RemoteAppListItem.h"
#include "ipc/IPCApplist.h"
#include "ipc/javamw-dbus-local.h"

/// The model for the renderer and the control, and the link between the list and the middleware.
///
/// Executes the middleware's calls on a wrapped model, owns the items that these calls create, and
/// sends the wrapped model's events to the middleware. Only the middleware changes the list: local
/// operations that would edit it are refused with a log line, all others are forwarded. Main thread
/// only.
class LocalAppListModel : public AppListModel,
                          public ItemSelectionListener,
                          public ItemChangeListener,
                          public ItemClickListener {
public:
    /// Opens the channel to the middleware and listens to model, which is not owned and must
    /// outlive this object. It is created before the views, so it receives each event first.
    explicit LocalAppListModel(AppListModel* model);
    /// Deletes the items without notifying the model. Destroy the model only afterwards.
    ~LocalAppListModel() override;
    LocalAppListModel(const LocalAppListModel&) = delete;
    LocalAppListModel& operator=(const LocalAppListModel&) = delete;
    LocalAppListModel(LocalAppListModel&&) = delete;
    LocalAppListModel& operator=(LocalAppListModel&&) = delete;

    void SetSelection(AppListItem* item) override;
    AppListItem* GetSelection() override;
    std::vector<AppListItem*> GetAllItems() override;
    void SetClicked(AppListItem* item) override;
    // These log that they are not implemented.
    void RemoveAllItems() override;
    void AddItems(const std::vector<AppListItem*>& items) override;
    void AddItemAtEnd(AppListItem* item) override;
    void RemoveItem(AppListItem* item) override;
    void ModifyItem(AppListItem* oldItem, AppListItem* newItem) override;
    /// Always returns 0, whatever the list contains; use GetAllItems() for the size.
    int GetItemsCount() override;

    // Listeners are registered with the wrapped model.
    void AddItemSelectionListener(ItemSelectionListener* listener) override;
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override;
    void AddItemChangeListener(ItemChangeListener* listener) override;
    void RemoveItemChangeListener(ItemChangeListener* listener) override;
    void AddItemClickedListener(ItemClickListener* listener) override;
    void RemoveItemClickedListener(ItemClickListener* listener) override;

    /// These send the event to all partners.
    void ItemSelected(AppListModel* model) override;
    void ItemChanged(AppListModel* model) override;
    void ItemClicked(AppListModel* model) override;

    /// Executes one remote call and returns its response. Unknown functions, incomplete items and
    /// surplus bytes are not errors: the function processes the readable part, and the response may
    /// be empty.
    std::vector<char> OnMessageReceive(int functionId, const std::vector<char>& payload);

    /// Sends LOCAL_CREATED_EVENT to a partner that has connected, or to all partners if the name is
    /// empty.
    void OnConnectionReady(const std::string& partner);

private:
    using RemoteItems = std::vector<RemoteAppListItem*>;
    /// A remote call: reads its items from request and writes its response to response.
    using RemoteFunction = void (LocalAppListModel::*)(std::istream& request,
                                                       std::ostream& response);

    /// Returns the function with this id, or null if it is unknown.
    static RemoteFunction FunctionOf(int functionId);

    void CallSetSelection(std::istream& request, std::ostream& response);
    void CallGetSelection(std::istream& request, std::ostream& response);
    void CallGetAllItems(std::istream& request, std::ostream& response);
    void CallRemoveAllItems(std::istream& request, std::ostream& response);
    void CallAddItems(std::istream& request, std::ostream& response);
    void CallAddItemAtEnd(std::istream& request, std::ostream& response);
    void CallSetClicked(std::istream& request, std::ostream& response);
    void CallRemoveItem(std::istream& request, std::ostream& response);
    void CallModifyItem(std::istream& request, std::ostream& response);

    /// Removes the first owned item with item's id from the model and deletes it. Does nothing if
    /// there is none.
    void PrivateRemoveItem(RemoteAppListItem item);
    /// Replaces the first owned item with oldItem's id by a copy of newItem, in the model and in
    /// m_remoteItems. Does nothing if there is none.
    void PrivateModifyItem(RemoteAppListItem oldItem, RemoteAppListItem newItem);
    /// Returns the first owned item with item's id.
    RemoteItems::iterator FindRemoteItem(AppListItem& item);
    void DeleteRemoteItems();
    /// Sends an event to a partner, or to all partners if the name is empty.
    void SendEvent(int eventId, const std::string& partner);

    IPCApplist<JavaMWDbusLocal, LocalAppListModel> m_ipc;
    AppListModel* m_model;
    /// Owned: the items that remote calls created, oldest first. Items that the model did not list,
    /// because their ids were already listed, stay here until a call names their id or clears
    /// the list.
    RemoteItems m_remoteItems;
};
