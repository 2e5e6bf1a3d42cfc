// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A program that is built against these headers calls virtual functions by their position and finds
// fields and base classes by their offset. A change of either breaks it without a message.
#include <algorithm>
#include <bit>
#include <cstring>
#include <functional>
#include <numeric>
#include <type_traits>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "AppListEntry.h"
#include "applist/AppList.h"
#include "applist/AppListControl.h"
#include "applist/AppListRenderer.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "applist/LocalAppListModel.h"
#include "applist/RemoteAppListItem.h"
#include "factory_data.h"
#include "platform_log.h"

namespace applist::test {
namespace {

/// The index of a virtual function in its class' table. The pointer to such a function contains the
/// function's offset there; on some machines the lowest bit marks it as virtual.
template <typename Function>
size_t SlotOf(Function function) {
    size_t offset = 0;
    static_assert(std::is_member_function_pointer_v<Function>);
    std::memcpy(&offset, &function, sizeof offset);
    return offset / sizeof(void*);
}

/// Expects the functions in consecutive slots, starting at the given one.
template <typename... Functions>
void ExpectSlotsFrom(size_t first, Functions... functions) {
    std::vector<size_t> expected(sizeof...(functions));
    std::iota(expected.begin(), expected.end(), first);
    EXPECT_EQ((std::vector{SlotOf(functions)...}), expected);
}

/// The offset of a base class in Class.
template <typename Class, typename Base>
std::ptrdiff_t OffsetOfBase() {
    alignas(Class) static char storage[sizeof(Class)];
    auto* object = reinterpret_cast<Class*>(storage);
    return reinterpret_cast<char*>(static_cast<Base*>(object)) - storage;
}

// A destructor takes two slots: the second form also frees the memory.
constexpr size_t DESTRUCTOR_SLOTS = 2;

TEST(VirtualFunctions, OfAnItemAreNameAndId) {
    ExpectSlotsFrom(0, &AppListItem::GetVisibleName, &AppListItem::GetUnigueId);
    EXPECT_TRUE(std::has_virtual_destructor_v<AppListItem>);
}

TEST(VirtualFunctions, OfAListenerAreOne) {
    ExpectSlotsFrom(0, &ItemSelectionListener::ItemSelected);
    ExpectSlotsFrom(0, &ItemChangeListener::ItemChanged);
    ExpectSlotsFrom(0, &ItemClickListener::ItemClicked);
    EXPECT_TRUE(std::has_virtual_destructor_v<ItemSelectionListener>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ItemChangeListener>);
    EXPECT_TRUE(std::has_virtual_destructor_v<ItemClickListener>);
}

TEST(VirtualFunctions, OfAModelKeepTheirOrder) {
    ExpectSlotsFrom(
        0, &AppListModel::SetSelection, &AppListModel::GetSelection, &AppListModel::GetAllItems,
        &AppListModel::SetClicked, &AppListModel::RemoveAllItems, &AppListModel::AddItems,
        &AppListModel::AddItemAtEnd, &AppListModel::RemoveItem, &AppListModel::ModifyItem,
        &AppListModel::GetItemsCount, &AppListModel::AddItemSelectionListener,
        &AppListModel::RemoveItemSelectionListener, &AppListModel::AddItemChangeListener,
        &AppListModel::RemoveItemChangeListener, &AppListModel::AddItemClickedListener,
        &AppListModel::RemoveItemClickedListener);
    EXPECT_TRUE(std::has_virtual_destructor_v<AppListModel>);
}

TEST(VirtualFunctions, OfTheLocalModelFollowThoseOfAModel) {
    ExpectSlotsFrom(SlotOf(&AppListModel::RemoveItemClickedListener) + 1 + DESTRUCTOR_SLOTS,
                    &LocalAppListModel::ItemSelected, &LocalAppListModel::ItemChanged,
                    &LocalAppListModel::ItemClicked);
}

TEST(VirtualFunctions, OfRendererAndControlAreSetModel) {
    ExpectSlotsFrom(0, &AppListRenderer::SetModel);
    ExpectSlotsFrom(0, &AppListControl::SetModel);
    EXPECT_TRUE(std::has_virtual_destructor_v<AppListRenderer>);
    EXPECT_TRUE(std::has_virtual_destructor_v<AppListControl>);
}

TEST(VirtualFunctions, OfTheRendererFollowEachOther) {
    ExpectSlotsFrom(SlotOf(&AppListRenderer::SetModel) + 1 + DESTRUCTOR_SLOTS,
                    &DefaultAppListRenderer::ItemSelected, &DefaultAppListRenderer::ItemChanged);
}

TEST(VirtualFunctions, OfTheChannelFollowItsDestructor) {
    using Adapter = IPCApplist<JavaMWDbusLocal, LocalAppListModel>;
    ExpectSlotsFrom(DESTRUCTOR_SLOTS, &JavaMWDbusLocal::HandleMessage,
                    &JavaMWDbusLocal::HandleNotification, &JavaMWDbusLocal::HandleConnectionReady);
    ExpectSlotsFrom(DESTRUCTOR_SLOTS, &Adapter::HandleMessage, &Adapter::HandleNotification,
                    &Adapter::HandleConnectionReady);
    EXPECT_TRUE(std::has_virtual_destructor_v<JavaMWDbusLocal>);
}

TEST(BaseClasses, FollowEachOther) {
    const std::ptrdiff_t face = sizeof(void*);
    EXPECT_EQ((OffsetOfBase<DefaultAppListRenderer, AppListRenderer>()), 0);
    EXPECT_EQ((OffsetOfBase<DefaultAppListRenderer, ItemSelectionListener>()), face);
    EXPECT_EQ((OffsetOfBase<DefaultAppListRenderer, ItemChangeListener>()), 2 * face);
    EXPECT_EQ((OffsetOfBase<DefaultAppListControl, AppListControl>()), 0);
    EXPECT_EQ((OffsetOfBase<DefaultAppListControl, ItemSelectionListener>()), face);
    EXPECT_EQ((OffsetOfBase<LocalAppListModel, AppListModel>()), 0);
    EXPECT_EQ((OffsetOfBase<LocalAppListModel, ItemSelectionListener>()), face);
    EXPECT_EQ((OffsetOfBase<LocalAppListModel, ItemChangeListener>()), 2 * face);
    EXPECT_EQ((OffsetOfBase<LocalAppListModel, ItemClickListener>()), 3 * face);
    EXPECT_EQ((OffsetOfBase<RemoteAppListItem, AppListItem>()), 0);
}

// Other tests use these constants by name, so only this test checks their values.
TEST(PlatformNumbers, AreThoseOfTheSet) {
    EXPECT_EQ(PLATFORM_LOG_DEBUG, 3);
    EXPECT_EQ(PLATFORM_LOG_INFO, 4);
    EXPECT_EQ(PLATFORM_LOG_ERROR, 6);
    EXPECT_EQ(FACTORY_DATA_INTEGER, 2);
    EXPECT_EQ(FACTORY_DATA_BUFFER_SIZE, 1008);
}

struct Layout {
    const char* className;
    std::vector<std::ptrdiff_t> offsets;
};

std::vector<Layout>& Layouts() {
    static std::vector<Layout> layouts;
    return layouts;
}

/// The fields of Class in the order that they must have. Only an explicit instantiation may name
/// private fields; it records their offsets when the program starts.
template <typename Class, auto... Fields>
struct FieldsOf {
    static inline const bool recorded = [] {
        Layouts().push_back({typeid(Class).name(), {std::bit_cast<std::ptrdiff_t>(Fields)...}});
        return true;
    }();
};

template struct FieldsOf<AppListEntry, &AppListEntry::m_appId, &AppListEntry::m_list,
                         &AppListEntry::m_defaultModel, &AppListEntry::m_localModel,
                         &AppListEntry::m_renderer, &AppListEntry::m_control,
                         &AppListEntry::m_launched>;
template struct FieldsOf<DefaultAppListItem, &DefaultAppListItem::m_visibleName,
                         &DefaultAppListItem::m_uniqueId>;
template struct FieldsOf<RemoteAppListItem, &RemoteAppListItem::m_visibleName,
                         &RemoteAppListItem::m_uniqueId>;
template struct FieldsOf<
    DefaultAppListModel, &DefaultAppListModel::m_items, &DefaultAppListModel::m_selection,
    &DefaultAppListModel::m_emptyItem, &DefaultAppListModel::m_selectionListeners,
    &DefaultAppListModel::m_changeListeners, &DefaultAppListModel::m_clickListeners>;
template struct FieldsOf<AppList, &AppList::m_model, &AppList::m_renderer, &AppList::m_control>;
template struct FieldsOf<DefaultAppListRenderer, &DefaultAppListRenderer::m_window,
                         &DefaultAppListRenderer::m_background,
                         &DefaultAppListRenderer::m_itemClass, &DefaultAppListRenderer::m_genlist,
                         &DefaultAppListRenderer::m_name, &DefaultAppListRenderer::m_model,
                         &DefaultAppListRenderer::m_selectionPropagator,
                         &DefaultAppListRenderer::m_focusItem>;
template struct FieldsOf<SelectionPropagator, &SelectionPropagator::m_model,
                         &SelectionPropagator::m_listener, &SelectionPropagator::m_suppressed>;
template struct FieldsOf<DefaultAppListControl, &DefaultAppListControl::m_model,
                         &DefaultAppListControl::m_timer, &DefaultAppListControl::m_timerMutex,
                         &DefaultAppListControl::m_keyHandler>;
template struct FieldsOf<
    JavaMWDbusLocal, &JavaMWDbusLocal::m_name, &JavaMWDbusLocal::m_uniqueName,
    &JavaMWDbusLocal::m_objectPath, &JavaMWDbusLocal::m_introspectionData,
    &JavaMWDbusLocal::m_ownerId, &JavaMWDbusLocal::m_registrationId,
    &JavaMWDbusLocal::m_synSubscriptionId, &JavaMWDbusLocal::m_synAckSubscriptionId,
    &JavaMWDbusLocal::m_ackSubscriptionId, &JavaMWDbusLocal::m_partner,
    &JavaMWDbusLocal::m_announced, &JavaMWDbusLocal::m_connection, &JavaMWDbusLocal::m_mutex>;
template struct FieldsOf<ConnectionPartner, &ConnectionPartner::uniqueName,
                         &ConnectionPartner::watchId, &ConnectionPartner::proxy,
                         &ConnectionPartner::signalSubscriptionId, &ConnectionPartner::state>;
using IpcOfTheList = IPCApplist<JavaMWDbusLocal, LocalAppListModel>;
template struct FieldsOf<
    IpcOfTheList, &IpcOfTheList::callbackMessageObject, &IpcOfTheList::callbackMessageMethod,
    &IpcOfTheList::callbackNotificationObject, &IpcOfTheList::callbackNotificationMethod,
    &IpcOfTheList::connectionReadyCallbackObject, &IpcOfTheList::connectionReadyCallbackMethod>;
template struct FieldsOf<LocalAppListModel, &LocalAppListModel::m_ipc, &LocalAppListModel::m_model,
                         &LocalAppListModel::m_remoteItems>;

TEST(Fields, FollowEachOther) {
    EXPECT_EQ(Layouts().size(), 12U);
    for (const auto& [className, offsets] : Layouts()) {
        EXPECT_EQ(std::adjacent_find(offsets.begin(), offsets.end(), std::greater_equal<>{}),
                  offsets.end())
            << className;
    }
}

}  // namespace
}  // namespace applist::test
