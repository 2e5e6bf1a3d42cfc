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

/// The model that the screen and the keys see, and the one place where the list meets the
/// middleware.
///
/// Carries out the middleware's calls on a wrapped model, owns the items that those calls create,
/// and tells the middleware what happens to the wrapped model. Only the middleware changes the
/// list: of the local operations, those that would edit it are refused with a log line, while
/// selection, clicks, reads and listeners pass through. Main thread only.
class LocalAppListModel : public AppListModel,
                          public ItemSelectionListener,
                          public ItemChangeListener,
                          public ItemClickListener {
public:
    /// Opens the channel to the middleware and listens to model, which is not owned and must
    /// outlive this object. Being built before the views, it is the first to hear of each event.
    explicit LocalAppListModel(AppListModel* model);
    /// Deletes the items without telling the model, which may only be destroyed afterwards.
    ~LocalAppListModel() override;
    LocalAppListModel(const LocalAppListModel&) = delete;
    LocalAppListModel& operator=(const LocalAppListModel&) = delete;
    LocalAppListModel(LocalAppListModel&&) = delete;
    LocalAppListModel& operator=(LocalAppListModel&&) = delete;

    void SetSelection(AppListItem* item) override;
    AppListItem* GetSelection() override;
    std::vector<AppListItem*> GetAllItems() override;
    void SetClicked(AppListItem* item) override;
    // Refused.
    void RemoveAllItems() override;
    void AddItems(const std::vector<AppListItem*>& items) override;
    void AddItemAtEnd(AppListItem* item) override;
    void RemoveItem(AppListItem* item) override;
    void ModifyItem(AppListItem* oldItem, AppListItem* newItem) override;
    /// Always 0, whatever the list holds; the size is that of GetAllItems().
    int GetItemsCount() override;

    // Listeners registered here are the wrapped model's.
    void AddItemSelectionListener(ItemSelectionListener* listener) override;
    void RemoveItemSelectionListener(ItemSelectionListener* listener) override;
    void AddItemChangeListener(ItemChangeListener* listener) override;
    void RemoveItemChangeListener(ItemChangeListener* listener) override;
    void AddItemClickedListener(ItemClickListener* listener) override;
    void RemoveItemClickedListener(ItemClickListener* listener) override;

    /// Each sends its event to every partner.
    void ItemSelected(AppListModel* model) override;
    void ItemChanged(AppListModel* model) override;
    void ItemClicked(AppListModel* model) override;

    /// Executes one remote call and returns its response. Unknown functions, incomplete items and
    /// surplus bytes are no errors: the answer is empty, or what the readable part leads to.
    std::vector<char> OnMessageReceive(int functionId, const std::vector<char>& payload);

    /// Tells a partner that has just connected that this side exists. An empty name tells all.
    void OnConnectionReady(const std::string& partner);

private:
    using RemoteItems = std::vector<RemoteAppListItem*>;
    /// A remote call: reads its items from request and writes its answer to response.
    using RemoteFunction = void (LocalAppListModel::*)(std::istream& request,
                                                       std::ostream& response);

    /// The function behind an id, null for none.
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

    void PrivateRemoveItem(RemoteAppListItem item);
    void PrivateModifyItem(RemoteAppListItem oldItem, RemoteAppListItem newItem);
    RemoteItems::iterator FindRemoteItem(AppListItem& item);
    void DeleteRemoteItems();
    void SendEvent(int eventId, const std::string& partner);

    IPCApplist<JavaMWDbusLocal, LocalAppListModel> m_ipc;
    AppListModel* m_model;
    /// Owned: what remote calls created, in that order. Items that the model refused as already
    /// listed stay here too until a call names their id or clears the list.
    RemoteItems m_remoteItems;
};
