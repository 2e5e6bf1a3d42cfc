// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <vector>

#include "applist/DefaultAppListItem.h"
#include "fakes/RecordingListModel.h"
#include "support/AllocationWatch.h"
#include "unit/ipc/RemoteFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace applist::test {
namespace {

class LocalAppListModelLifecycle : public testing::Test {
protected:
    LocalAppListModelLifecycle() {
        TheTransport() = FakeTransport{};
        ClearLog();
    }

    RecordingListModel model;
};

TEST_F(LocalAppListModelLifecycle, OpensTheChannelBeforeItListens) {
    const LocalAppListModel local(&model);
    EXPECT_THAT(Log(),
                ElementsAre(Event("transport created: Applist"), Debug("IPCApplist"),
                            Event("AddItemSelectionListener"), Event("AddItemChangeListener"),
                            Event("AddItemClickedListener")));
    EXPECT_EQ(TheTransport().name, "Applist");
}

TEST_F(LocalAppListModelLifecycle, ListensThroughEachOfItsInterfaces) {
    LocalAppListModel local(&model);
    EXPECT_EQ(model.selectionListener, &local);
    EXPECT_EQ(model.changeListener, &local);
    EXPECT_EQ(model.clickListener, &local);
}

TEST_F(LocalAppListModelLifecycle, TakesCallsAndPartnersFromTheStart) {
    const LocalAppListModel local(&model);
    ClearLog();
    std::vector<char> frame = Bytes(Length(SET_CLICKED));
    TheTransport().live->HandleMessage(frame);
    TheTransport().live->HandleConnectionReady(true, ":1.1");
    EXPECT_THAT(LogMessages(), SizeIs(6));
    EXPECT_THAT(TheTransport().sent, SizeIs(1));
}

TEST_F(LocalAppListModelLifecycle, EndsWithTheChannelAfterListenersAndItems) {
    auto local = std::make_unique<LocalAppListModel>(&model);
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
    EXPECT_THAT(Log(),
                ElementsAre(Info("Unregistered callbackMessageObject"),
                            Info("Unregistered connectionReadyCallbackObject"),
                            Event("RemoveItemSelectionListener"), Event("RemoveItemChangeListener"),
                            Event("RemoveItemClickedListener"), Event("deleted item 0"),
                            Event("deleted item 1"), Event("deleted item 2"),
                            Event("transport destroyed")));
    EXPECT_EQ(TheTransport().live, nullptr);
}

TEST_F(LocalAppListModelLifecycle, SendsNoEventsWhenItIsDestroyed) {
    DefaultAppListModel list;
    RecordingListener view("view");
    auto local = std::make_unique<LocalAppListModel>(&list);
    view.ListenTo(*local);
    local->OnMessageReceive(ADD_ITEMS, Bytes(ItemBytes("Alpha", "a")));
    TheTransport().sent.clear();
    ClearLog();
    local.reset();
    EXPECT_THAT(Log(), ElementsAre(Info("Unregistered callbackMessageObject"),
                                   Info("Unregistered connectionReadyCallbackObject"),
                                   Event("transport destroyed")));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(LocalAppListModelLifecycle, ReceivesNoEventsAfterItIsDestroyed) {
    DefaultAppListModel list;
    DefaultAppListItem item("Alpha", "a");
    std::make_unique<LocalAppListModel>(&list).reset();
    ClearLog();
    list.AddItems({&item});
    list.SetClicked(&item);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Debug("Menu item clicked: [name: Alpha, unique id: a]"),
                            Debug("Number of clicked listeners: 0")));
}

}  // namespace
}  // namespace applist::test
