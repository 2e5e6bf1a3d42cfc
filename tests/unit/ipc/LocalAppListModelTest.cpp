// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "fakes/FakeListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeTransport.h"
#include "fakes/RecordingListener.h"
#include "support/AllocationWatch.h"
#include "unit/ipc/WireBytes.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace applist::test {
namespace {

constexpr int ADD_ITEMS = 2004;
constexpr int ADD_ITEM_AT_END = 2005;
const std::vector<std::string> UNREGISTERED{
    "INFO UnregisterOnMessage: Unregistered callbackMessageObject",
    "INFO UnregisterOnConnectionReady: Unregistered connectionReadyCallbackObject"};

/// A local model over a model that records the calls that it receives.
class LocalAppListModelCalls : public testing::Test {
protected:
    LocalAppListModelCalls() {
        TheTransport() = FakeTransport{};
        ClearLog();
        model.onCall = [](const std::string& call) { Note(call); };
        local = std::make_unique<LocalAppListModel>(&model);
    }

    DefaultAppListItem item{"Alpha", "a"};
    DefaultAppListItem other{"Beta", "b"};
    RecordingListener listener{"listener"};
    FakeListModel model;
    std::unique_ptr<LocalAppListModel> local;
};

TEST_F(LocalAppListModelCalls, BeginWhenTheChannelIsOpen) {
    EXPECT_EQ(LogText(), Lines({"transport created: Applist", "IPCApplist: IPCApplist",
                                "AddItemSelectionListener", "AddItemChangeListener",
                                "AddItemClickedListener"}));
    EXPECT_THAT(model.selectionListeners, ElementsAre(local.get()));
    EXPECT_THAT(model.changeListeners, ElementsAre(local.get()));
    EXPECT_THAT(model.clickListeners, ElementsAre(local.get()));
    std::vector<char> frame = Bytes(Length(2006));
    TheTransport().live->HandleMessage(frame);
    EXPECT_EQ(Log().back().message, "Remote call: SetClicked. This function is not implemented");
    TheTransport().live->HandleConnectionReady(true, ":1.1");
    EXPECT_THAT(TheTransport().sent, SizeIs(1));
}

TEST_F(LocalAppListModelCalls, EndWithTheChannelAfterListenersAndItems) {
    local->OnMessageReceive(ADD_ITEMS, Bytes(ItemBytes("Alpha", "a") + ItemBytes("Beta", "b")));
    local->OnMessageReceive(ADD_ITEM_AT_END, Bytes(ItemBytes("Gamma", "c")));
    std::vector<AppListItem*> items = model.added;
    items.push_back(model.item);
    ASSERT_THAT(items, SizeIs(3));
    ClearLog();
    {
        const DeletionWatch watch([&items](const void* block) {
            for (size_t i = 0; i < items.size(); ++i) {
                if (items[i] == block) {
                    Note("deleted item " + std::to_string(i));
                }
            }
        });
        local.reset();
    }
    EXPECT_EQ(LogText(), Lines(UNREGISTERED) +
                             Lines({"RemoveItemSelectionListener", "RemoveItemChangeListener",
                                    "RemoveItemClickedListener", "deleted item 0", "deleted item 1",
                                    "deleted item 2", "transport destroyed"}));
    EXPECT_EQ(TheTransport().live, nullptr);
}

TEST_F(LocalAppListModelCalls, ForwardSelectionClicksAndReads) {
    // Events are not the subject.
    model.selectionListeners.clear();
    ClearLog();
    local->SetSelection(&item);
    EXPECT_EQ(model.item, &item);
    local->SetSelection(nullptr);
    EXPECT_EQ(model.item, nullptr);
    model.selection = nullptr;
    EXPECT_EQ(local->GetSelection(), nullptr);
    model.selection = &other;
    EXPECT_EQ(local->GetSelection(), &other);
    local->SetClicked(&item);
    EXPECT_EQ(model.item, &item);
    model.items = {&other, &item};
    EXPECT_THAT(local->GetAllItems(), ElementsAre(&other, &item));
    EXPECT_EQ(LogText(), Lines({"SetSelection(a)", "SetSelection(null)", "GetSelection",
                                "GetSelection", "SetClicked(a)", "GetAllItems"}));
}

TEST_F(LocalAppListModelCalls, ForwardListeners) {
    ClearLog();
    listener.ListenTo(*local);
    EXPECT_THAT(model.selectionListeners, ElementsAre(local.get(), &listener));
    EXPECT_THAT(model.changeListeners, ElementsAre(local.get(), &listener));
    EXPECT_THAT(model.clickListeners, ElementsAre(local.get(), &listener));
    local->RemoveItemSelectionListener(&listener);
    local->RemoveItemChangeListener(&listener);
    local->RemoveItemClickedListener(&listener);
    EXPECT_THAT(model.selectionListeners, ElementsAre(local.get()));
    EXPECT_THAT(model.changeListeners, ElementsAre(local.get()));
    EXPECT_THAT(model.clickListeners, ElementsAre(local.get()));
    EXPECT_EQ(LogText(), Lines({"AddItemSelectionListener", "AddItemChangeListener",
                                "AddItemClickedListener", "RemoveItemSelectionListener",
                                "RemoveItemChangeListener", "RemoveItemClickedListener"}));
}

TEST_F(LocalAppListModelCalls, RefuseToEditOrToCountTheList) {
    model.items = {&item};
    ClearLog();
    local->RemoveAllItems();
    local->AddItems({&item});
    local->AddItemAtEnd(&item);
    local->RemoveItem(&item);
    local->ModifyItem(&item, &other);
    EXPECT_EQ(local->GetItemsCount(), 0);
    std::vector<std::string> refused;
    for (const std::string function : {"RemoveAllItems", "AddItems", "AddItemAtEnd", "RemoveItem",
                                       "ModifyItem", "GetItemsCount"}) {
        refused.push_back(function + ": " + function + " method is not implemented");
    }
    EXPECT_EQ(LogText(), Lines(refused));
}

/// A local model over the real list, with a view that listens as the screen does.
class LocalAppListModelEvents : public testing::Test {
protected:
    LocalAppListModelEvents() {
        TheTransport() = FakeTransport{};
        local = std::make_unique<LocalAppListModel>(&list);
        view.ListenTo(*local);
        local->OnMessageReceive(ADD_ITEMS, Bytes(ItemBytes("Alpha", "a") + ItemBytes("Beta", "b")));
        TheTransport().sent.clear();
        ClearLog();
    }

    RecordingListener view{"view"};
    DefaultAppListModel list;
    std::unique_ptr<LocalAppListModel> local;
};

const std::vector<std::string> SELECTION_SENT{
    "ItemSelected: Sending Item Selection Event to remote object", "notify all: 02 00 00 00"};
const std::vector<std::string> CLICK_SENT{
    "ItemClicked: Sending Item Clicked Event to remote object", "notify all: 03 00 00 00"};

TEST_F(LocalAppListModelEvents, GoToEveryPartnerAndDoNotReadTheModel) {
    local->ItemChanged(nullptr);
    local->ItemSelected(nullptr);
    local->ItemClicked(nullptr);
    EXPECT_EQ(LogText(), Lines({"ItemChanged: Sending Item Change Event to remote object",
                                "notify all: 01 00 00 00"}) +
                             Lines(SELECTION_SENT) + Lines(CLICK_SENT));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{1, 0, 0, 0}, std::nullopt},
                                                 SentNotification{{2, 0, 0, 0}, std::nullopt},
                                                 SentNotification{{3, 0, 0, 0}, std::nullopt}));
}

TEST_F(LocalAppListModelEvents, GreetTheNewPartnerAlone) {
    TheTransport().live->HandleConnectionReady(true, ":1.42");
    TheTransport().live->HandleConnectionReady(false, ":1.42");
    EXPECT_EQ(LogText(),
              Lines({"HandleConnectionReady: HandleConnectionReady state=1, partner=:1.42",
                     "HandleConnectionReady: Calling connection ready callback",
                     "OnConnectionReady: Connection established with partner :1.42. Sending Local "
                     "created event",
                     "notify :1.42: 04 00 00 00",
                     "HandleConnectionReady: HandleConnectionReady state=0, partner=:1.42"}));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{4, 0, 0, 0}, ":1.42"}));
}

TEST_F(LocalAppListModelEvents, GreetAllPartnersIfTheNewOneHasNoName) {
    local->OnConnectionReady("");
    EXPECT_EQ(LogText(), Lines({"OnConnectionReady: Connection established with partner . Sending "
                                "Local created event",
                                "notify all: 04 00 00 00"}));
}

TEST_F(LocalAppListModelEvents, ReachTheMiddlewareBeforeTheScreen) {
    local->SetSelection(list.GetAllItems().at(1));
    local->SetClicked(list.GetAllItems().at(1));
    EXPECT_EQ(LogText(), Lines(SELECTION_SENT) +
                             Lines({"view selected [a b*]",
                                    "SetClicked: Menu item clicked: [name: Beta, unique id: b]",
                                    "SetClicked: Number of clicked listeners: 2"}) +
                             Lines(CLICK_SENT) + Lines({"view clicked [a b*]"}));
}

TEST_F(LocalAppListModelEvents, OfTheMiddlewareAreIgnored) {
    std::vector<char> frame = Bytes(ItemBytes("Alpha", "a") + Length(2007));
    TheTransport().live->HandleNotification(frame);
    EXPECT_EQ(LogText(),
              Lines({"HandleNotification: IPC HandleNotification",
                     "INFO HandleNotification: callbackNotificationObject object is NULL"}));
    EXPECT_EQ(StateOf(&list), "[a* b]");
}

TEST_F(LocalAppListModelEvents, AreNeitherSentNorReceivedAfterTheEnd) {
    local.reset();
    EXPECT_EQ(LogText(), Lines(UNREGISTERED) + "transport destroyed\n");
    DefaultAppListModel another;
    std::make_unique<LocalAppListModel>(&another).reset();
    TheTransport().sent.clear();
    DefaultAppListItem item("Alpha", "a");
    another.AddItems({&item});
    another.SetClicked(&item);
    EXPECT_EQ(Log().back(), Debug("Number of clicked listeners: 0"));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

}  // namespace
}  // namespace applist::test
