// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/LocalAppListModel.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <sstream>
#include <string_view>
#include <utility>

#include "LittleEndian.h"
#include "Log.h"

namespace {

constexpr const char* CHANNEL_NAME = "Applist";

// The ids and events below are part of the wire protocol (docs/protocol.md).
constexpr int FIRST_FUNCTION_ID = 2000;

enum EventId {
    ITEM_CHANGE_EVENT = 1,
    ITEM_SELECTION_EVENT = 2,
    ITEM_CLICKED_EVENT = 3,
    LOCAL_CREATED_EVENT = 4,
};

const std::string ALL_PARTNERS;

// The default model never returns null, but another implementation might.
std::string NameOf(AppListItem* item) {
    return item == nullptr ? std::string() : item->GetVisibleName();
}

std::string IdOf(AppListItem* item) {
    return item == nullptr ? std::string() : item->GetUnigueId();
}

}  // namespace

LocalAppListModel::LocalAppListModel(AppListModel* model) : m_ipc(CHANNEL_NAME), m_model(model) {
    m_model->AddItemSelectionListener(this);
    m_model->AddItemChangeListener(this);
    m_model->AddItemClickedListener(this);
    m_ipc.RegisterOnMessage(this, &LocalAppListModel::OnMessageReceive);
    m_ipc.RegisterOnConnectionReady(this, &LocalAppListModel::OnConnectionReady);
}

LocalAppListModel::~LocalAppListModel() {
    // The callbacks go first, so that a call or a new partner cannot reach a half-destroyed model.
    m_ipc.UnregisterOnMessage(this);
    m_ipc.UnregisterOnConnectionReady(this);
    m_model->RemoveItemSelectionListener(this);
    m_model->RemoveItemChangeListener(this);
    m_model->RemoveItemClickedListener(this);
    DeleteRemoteItems();
}

void LocalAppListModel::SetSelection(AppListItem* item) {
    m_model->SetSelection(item);
}

AppListItem* LocalAppListModel::GetSelection() {
    return m_model->GetSelection();
}

std::vector<AppListItem*> LocalAppListModel::GetAllItems() {
    return m_model->GetAllItems();
}

void LocalAppListModel::SetClicked(AppListItem* item) {
    m_model->SetClicked(item);
}

// The local user interface only selects and clicks. The list's content belongs to the middleware,
// so local changes of it are refused.
void LocalAppListModel::RemoveAllItems() {
    LOG_DEBUG("RemoveAllItems method is not implemented");
}

void LocalAppListModel::AddItems(const std::vector<AppListItem*>& /*items*/) {
    LOG_DEBUG("AddItems method is not implemented");
}

void LocalAppListModel::AddItemAtEnd(AppListItem* /*item*/) {
    LOG_DEBUG("AddItemAtEnd method is not implemented");
}

void LocalAppListModel::RemoveItem(AppListItem* /*item*/) {
    LOG_DEBUG("RemoveItem method is not implemented");
}

void LocalAppListModel::ModifyItem(AppListItem* /*oldItem*/, AppListItem* /*newItem*/) {
    LOG_DEBUG("ModifyItem method is not implemented");
}

int LocalAppListModel::GetItemsCount() {
    LOG_DEBUG("GetItemsCount method is not implemented");
    return 0;
}

void LocalAppListModel::AddItemSelectionListener(ItemSelectionListener* listener) {
    m_model->AddItemSelectionListener(listener);
}

void LocalAppListModel::RemoveItemSelectionListener(ItemSelectionListener* listener) {
    m_model->RemoveItemSelectionListener(listener);
}

void LocalAppListModel::AddItemChangeListener(ItemChangeListener* listener) {
    m_model->AddItemChangeListener(listener);
}

void LocalAppListModel::RemoveItemChangeListener(ItemChangeListener* listener) {
    m_model->RemoveItemChangeListener(listener);
}

void LocalAppListModel::AddItemClickedListener(ItemClickListener* listener) {
    m_model->AddItemClickedListener(listener);
}

void LocalAppListModel::RemoveItemClickedListener(ItemClickListener* listener) {
    m_model->RemoveItemClickedListener(listener);
}

void LocalAppListModel::ItemSelected(AppListModel* /*model*/) {
    LOG_DEBUG("Sending Item Selection Event to remote object");
    SendEvent(ITEM_SELECTION_EVENT, ALL_PARTNERS);
}

void LocalAppListModel::ItemChanged(AppListModel* /*model*/) {
    LOG_DEBUG("Sending Item Change Event to remote object");
    SendEvent(ITEM_CHANGE_EVENT, ALL_PARTNERS);
}

void LocalAppListModel::ItemClicked(AppListModel* /*model*/) {
    LOG_DEBUG("Sending Item Clicked Event to remote object");
    SendEvent(ITEM_CLICKED_EVENT, ALL_PARTNERS);
}

void LocalAppListModel::OnConnectionReady(const std::string& partner) {
    LOG_DEBUG("Connection established with partner %s. Sending Local created event",
              partner.c_str());
    SendEvent(LOCAL_CREATED_EVENT, partner);
}

std::vector<char> LocalAppListModel::OnMessageReceive(int functionId,
                                                      const std::vector<char>& payload) {
    const RemoteFunction function = FunctionOf(functionId);
    if (function == nullptr) {
        LOG_DEBUG("Call to undefined function: %d", functionId);
        return {};
    }
    // Reading a truncated argument fails and leaves the item empty. The function is then called
    // with an empty item, because the protocol does not have an error reply.
    std::istringstream request(std::string(payload.begin(), payload.end()));
    std::ostringstream response;
    (this->*function)(request, response);
    const std::string_view bytes = response.view();
    return {bytes.begin(), bytes.end()};
}

LocalAppListModel::RemoteFunction LocalAppListModel::FunctionOf(int functionId) {
    // In the order of the function ids, starting with FIRST_FUNCTION_ID.
    static constexpr std::array<RemoteFunction, 9> FUNCTIONS = {
        &LocalAppListModel::CallSetSelection, &LocalAppListModel::CallGetSelection,
        &LocalAppListModel::CallGetAllItems,  &LocalAppListModel::CallRemoveAllItems,
        &LocalAppListModel::CallAddItems,     &LocalAppListModel::CallAddItemAtEnd,
        &LocalAppListModel::CallSetClicked,   &LocalAppListModel::CallRemoveItem,
        &LocalAppListModel::CallModifyItem,
    };
    constexpr int LAST_FUNCTION_ID = FIRST_FUNCTION_ID + static_cast<int>(FUNCTIONS.size()) - 1;
    if (functionId < FIRST_FUNCTION_ID || functionId > LAST_FUNCTION_ID) {
        return nullptr;
    }
    return FUNCTIONS[static_cast<size_t>(functionId - FIRST_FUNCTION_ID)];
}

void LocalAppListModel::CallSetSelection(std::istream& request, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: SetSelection");
    RemoteAppListItem item;
    request >> item;
    LOG_DEBUG("Selected item name: %s, uniqueId: %s", item.GetVisibleName().c_str(),
              item.GetUnigueId().c_str());
    // A temporary is sufficient: the model only compares its id and keeps its own item.
    m_model->SetSelection(&item);
}

void LocalAppListModel::CallGetSelection(std::istream& /*request*/, std::ostream& response) {
    const std::string name = NameOf(m_model->GetSelection());
    const std::string id = IdOf(m_model->GetSelection());
    LOG_DEBUG("Remote call: GetSelection. Selected item name: %s, uniqueId: %s", name.c_str(),
              id.c_str());
    AppListItem* selection = m_model->GetSelection();
    if (selection == nullptr) {
        LOG_ERROR("The model returned null for its selection. The response stays empty");
        return;
    }
    response << RemoteAppListItem(*selection);
}

void LocalAppListModel::CallGetAllItems(std::istream& /*request*/, std::ostream& response) {
    LOG_DEBUG("Remote call: GetAllItems");
    for (AppListItem* item : m_model->GetAllItems()) {
        response << RemoteAppListItem(*item);
    }
}

void LocalAppListModel::CallRemoveAllItems(std::istream& /*request*/, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: RemoveAllItems");
    m_model->RemoveAllItems();
    // Deleted after the call, because listeners may still read the items.
    LOG_DEBUG("Removing items");
    DeleteRemoteItems();
}

void LocalAppListModel::CallAddItems(std::istream& request, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: AddItems");
    std::vector<AppListItem*> batch;
    RemoteAppListItem buffer;
    // Ends at the first incomplete item.
    while (request >> buffer) {
        auto* item = new RemoteAppListItem(buffer);
        batch.push_back(item);
        // Kept here, because the default model does not own its items.
        m_remoteItems.push_back(item);
        LOG_DEBUG(" - RemoteAppListItem name: %s, uniqueId: %s", item->GetVisibleName().c_str(),
                  item->GetUnigueId().c_str());
    }
    m_model->AddItems(batch);
    LOG_DEBUG("%d items has been added to Applist", static_cast<int>(batch.size()));
}

void LocalAppListModel::CallAddItemAtEnd(std::istream& request, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: AddItemAtEnd");
    auto* item = new RemoteAppListItem;
    request >> *item;
    m_model->AddItemAtEnd(item);
    // Kept even if the model did not list it, because it may have become the selection.
    m_remoteItems.push_back(item);
}

// Only the viewer clicks. The middleware receives the click as an event and must not cause one.
void LocalAppListModel::CallSetClicked(std::istream& /*request*/, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: SetClicked. This function is not implemented");
}

void LocalAppListModel::CallRemoveItem(std::istream& request, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: RemoveItem");
    RemoteAppListItem item;
    request >> item;
    PrivateRemoveItem(item);
}

// If the new id is already used, even by the old item itself, the old item is removed: renaming an
// item without changing its id removes it. The middleware relies on this; it keeps ids unique.
void LocalAppListModel::CallModifyItem(std::istream& request, std::ostream& /*response*/) {
    LOG_DEBUG("Remote call: ModifyItem");
    RemoteAppListItem oldItem;
    RemoteAppListItem newItem;
    request >> oldItem >> newItem;
    if (FindRemoteItem(newItem) == m_remoteItems.end()) {
        PrivateModifyItem(oldItem, newItem);
    } else {
        PrivateRemoveItem(oldItem);
    }
}

void LocalAppListModel::PrivateRemoveItem(RemoteAppListItem item) {
    const auto position = FindRemoteItem(item);
    if (position == m_remoteItems.end()) {
        return;
    }
    RemoteAppListItem* element = *position;
    LOG_DEBUG("Removing item name: %s, uniqueId: %s", element->GetVisibleName().c_str(),
              element->GetUnigueId().c_str());
    // Deleted after the call, because listeners may still read the element.
    m_model->RemoveItem(element);
    delete element;
    m_remoteItems.erase(position);
}

void LocalAppListModel::PrivateModifyItem(RemoteAppListItem oldItem, RemoteAppListItem newItem) {
    const auto position = FindRemoteItem(oldItem);
    if (position == m_remoteItems.end()) {
        return;
    }
    RemoteAppListItem* element = *position;
    auto* replacement = new RemoteAppListItem(std::move(newItem));
    LOG_DEBUG("Replacing item name: %s, uniqueId: %s with name: %s, uniqueId: %s",
              element->GetVisibleName().c_str(), element->GetUnigueId().c_str(),
              replacement->GetVisibleName().c_str(), replacement->GetUnigueId().c_str());
    m_model->ModifyItem(element, replacement);
    // Deleted after the call, because listeners may still read the element.
    delete element;
    *position = replacement;
}

LocalAppListModel::RemoteItems::iterator LocalAppListModel::FindRemoteItem(AppListItem& item) {
    return std::find_if(m_remoteItems.begin(), m_remoteItems.end(), ApplistItemComparator(&item));
}

void LocalAppListModel::DeleteRemoteItems() {
    for (RemoteAppListItem* item : m_remoteItems) {
        delete item;
    }
    m_remoteItems.clear();
}

void LocalAppListModel::SendEvent(int eventId, const std::string& partner) {
    // The message contains only the event's id, because a copy of the item could be outdated when
    // it arrives. The receiver asks for the current state instead.
    const auto bytes = applist::ToLittleEndian(static_cast<std::uint32_t>(eventId));
    std::vector<char> message(bytes.begin(), bytes.end());
    if (partner.empty()) {
        m_ipc.SendNotification(message);
    } else {
        m_ipc.SendNotification(message, partner);
    }
}
