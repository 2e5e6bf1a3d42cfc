// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include "applist/DefaultAppListItem.h"
#include "fakes/RecordingListModel.h"
#include "unit/ipc/RemoteFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

/// The calls that the views make, with an inner model that records what it receives.
class LocalAppListModelOperations : public testing::Test {
protected:
    LocalAppListModelOperations() {
        TheTransport() = FakeTransport{};
        local = std::make_unique<LocalAppListModel>(&model);
        ClearLog();
    }

    DefaultAppListItem item{"Alpha", "a"};
    DefaultAppListItem other{"Beta", "b"};
    RecordingListener listener{"listener"};
    RecordingListModel model;
    std::unique_ptr<LocalAppListModel> local;
};

TEST_F(LocalAppListModelOperations, ForwardTheSelection) {
    local->SetSelection(&item);
    EXPECT_EQ(model.item, &item);
    local->SetSelection(nullptr);
    EXPECT_EQ(model.item, nullptr);
    model.selection = &other;
    EXPECT_EQ(local->GetSelection(), &other);
    model.selection = nullptr;
    EXPECT_EQ(local->GetSelection(), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Event("SetSelection"), Event("SetSelection"),
                                   Event("GetSelection"), Event("GetSelection")));
}

TEST_F(LocalAppListModelOperations, ForwardClicks) {
    local->SetClicked(&item);
    EXPECT_EQ(model.item, &item);
    EXPECT_THAT(Log(), ElementsAre(Event("SetClicked")));
}

TEST_F(LocalAppListModelOperations, ForwardReads) {
    model.items = {&other, &item};
    EXPECT_THAT(local->GetAllItems(), ElementsAre(&other, &item));
    EXPECT_THAT(Log(), ElementsAre(Event("GetAllItems")));
}

TEST_F(LocalAppListModelOperations, ForwardListeners) {
    listener.ListenTo(*local);
    EXPECT_EQ(model.selectionListener, &listener);
    EXPECT_EQ(model.changeListener, &listener);
    EXPECT_EQ(model.clickListener, &listener);
    model.selectionListener = nullptr;
    model.changeListener = nullptr;
    model.clickListener = nullptr;
    local->RemoveItemSelectionListener(&listener);
    local->RemoveItemChangeListener(&listener);
    local->RemoveItemClickedListener(&listener);
    EXPECT_EQ(model.selectionListener, &listener);
    EXPECT_EQ(model.changeListener, &listener);
    EXPECT_EQ(model.clickListener, &listener);
    EXPECT_THAT(Log(),
                ElementsAre(Event("AddItemSelectionListener"), Event("AddItemChangeListener"),
                            Event("AddItemClickedListener"), Event("RemoveItemSelectionListener"),
                            Event("RemoveItemChangeListener"), Event("RemoveItemClickedListener")));
}

TEST_F(LocalAppListModelOperations, RefuseToEditTheList) {
    local->RemoveAllItems();
    local->AddItems({&item});
    local->AddItemAtEnd(&item);
    local->RemoveItem(&item);
    local->ModifyItem(&item, &other);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("RemoveAllItems method is not implemented", "RemoveAllItems"),
                            Debug("AddItems method is not implemented", "AddItems"),
                            Debug("AddItemAtEnd method is not implemented", "AddItemAtEnd"),
                            Debug("RemoveItem method is not implemented", "RemoveItem"),
                            Debug("ModifyItem method is not implemented", "ModifyItem")));
}

TEST_F(LocalAppListModelOperations, CountNoItemsWhateverTheListHolds) {
    model.items = {&item};
    model.count = 1;
    EXPECT_EQ(local->GetItemsCount(), 0);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("GetItemsCount method is not implemented", "GetItemsCount")));
}

using LocalAppListModelEvents = RemoteFixture;

TEST_F(LocalAppListModelEvents, GoToEveryPartner) {
    local->ItemChanged(&model);
    local->ItemSelected(&model);
    local->ItemClicked(&model);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Sending Item Change Event to remote object", "ItemChanged"),
                            Event("notify all: 01 00 00 00"),
                            Debug("Sending Item Selection Event to remote object", "ItemSelected"),
                            Event("notify all: 02 00 00 00"),
                            Debug("Sending Item Clicked Event to remote object", "ItemClicked"),
                            Event("notify all: 03 00 00 00")));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{1, 0, 0, 0}, std::nullopt},
                                                 SentNotification{{2, 0, 0, 0}, std::nullopt},
                                                 SentNotification{{3, 0, 0, 0}, std::nullopt}));
}

TEST_F(LocalAppListModelEvents, DoNotLookAtTheModelThatChanged) {
    local->ItemChanged(nullptr);
    local->ItemSelected(nullptr);
    local->ItemClicked(nullptr);
    EXPECT_EQ(TheTransport().sent.size(), 3U);
}

TEST_F(LocalAppListModelEvents, GreetTheNewPartnerAlone) {
    TheTransport().live->HandleConnectionReady(true, ":1.42");
    EXPECT_THAT(Log(), ElementsAre(Debug("HandleConnectionReady state=1, partner=:1.42"),
                                   Debug("Calling connection ready callback"),
                                   Debug("Connection established with partner :1.42. Sending Local "
                                         "created event",
                                         "OnConnectionReady"),
                                   Event("notify :1.42: 04 00 00 00")));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{4, 0, 0, 0}, ":1.42"}));
}

TEST_F(LocalAppListModelEvents, GreetAllPartnersWhenTheNewOneHasNoName) {
    local->OnConnectionReady("");
    EXPECT_THAT(Log(), ElementsAre(Debug("Connection established with partner . Sending Local "
                                         "created event"),
                                   Event("notify all: 04 00 00 00")));
}

TEST_F(LocalAppListModelEvents, AreNotSentForALostPartner) {
    TheTransport().live->HandleConnectionReady(false, ":1.42");
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(LocalAppListModelEvents, ReachTheMiddlewareBeforeTheScreen) {
    FillWithThree();
    local->SetSelection(Listed(2));
    local->SetClicked(Listed(2));
    EXPECT_THAT(Log(),
                ElementsAre(SelectionLine(), SelectionSent(), Event("view selected [a b c*]"),
                            Debug("Menu item clicked: [name: Gamma, unique id: c]"),
                            Debug("Number of clicked listeners: 2"),
                            Debug("Sending Item Clicked Event to remote object"),
                            Event("notify all: 03 00 00 00"), Event("view clicked [a b c*]")));
}

TEST_F(LocalAppListModelEvents, OfTheMiddlewareAreDropped) {
    FillWithThree();
    std::vector<char> frame = Bytes(A + Length(REMOVE_ITEM));
    TheTransport().live->HandleNotification(frame);
    EXPECT_THAT(Log(), ElementsAre(Debug("IPC HandleNotification"),
                                   Info("callbackNotificationObject object is NULL")));
    EXPECT_EQ(model.GetItemsCount(), 3);
}

}  // namespace
}  // namespace applist::test
