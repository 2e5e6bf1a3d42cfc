// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include "support/AllocationWatch.h"
#include "unit/ipc/RemoteFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

/// Notes the deletion of each item that is listed at its construction, as "deleted ID".
class DeletionRecorder {
public:
    explicit DeletionRecorder(AppListModel& model) {
        for (AppListItem* item : model.GetAllItems()) {
            m_items.push_back({item, "deleted " + item->GetUnigueId()});
        }
    }

private:
    struct Entry {
        const void* item;
        std::string event;
    };

    void Report(const void* block) const {
        for (const Entry& entry : m_items) {
            if (entry.item == block) {
                Note(entry.event);
            }
        }
    }

    std::vector<Entry> m_items;
    DeletionWatch m_watch{[this](const void* block) { Report(block); }};
};

using RemoteRemoveAllItems = RemoteFixture;

TEST_F(RemoteRemoveAllItems, DeletesTheItemsAfterAllNotifications) {
    FillWithThree();
    {
        const DeletionRecorder recorder(model);
        EXPECT_EQ(Call(REMOVE_ALL_ITEMS, "ignored"), "");
    }
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: RemoveAllItems"), ChangeLine(), ChangeSent(),
                                   Event("view changed []"), SelectionLine(), SelectionSent(),
                                   Event("view selected []"), Debug("Removing items"),
                                   Event("deleted a"), Event("deleted b"), Event("deleted c")));
}

TEST_F(RemoteRemoveAllItems, OfAnEmptyListSendsNothing) {
    EXPECT_EQ(Call(REMOVE_ALL_ITEMS), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: RemoveAllItems"), Debug("Removing items")));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(RemoteRemoveAllItems, ForgetsTheDuplicatesToo) {
    Call(ADD_ITEMS, A + A);
    Call(REMOVE_ALL_ITEMS);
    ClearLog();
    Call(REMOVE_ITEM, A);
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: RemoveItem")));
}

using RemoteRemoveItem = RemoteFixture;

TEST_F(RemoteRemoveItem, DeletesTheItemAfterAllNotifications) {
    FillWithThree();
    {
        const DeletionRecorder recorder(model);
        EXPECT_EQ(Call(REMOVE_ITEM, ItemBytes("whatever", "a")), "");
    }
    EXPECT_THAT(
        Log(), ElementsAre(Debug("Remote call: RemoveItem"),
                           Debug("Removing item name: Alpha, uniqueId: a"),
                           Debug("Next element is nearest"), Debug("Found new item to be selected"),
                           Debug("Removed item form list"), ChangeLine(), ChangeSent(),
                           Event("view changed [b* c]"), Debug("Sent item change event"),
                           SelectionLine(), SelectionSent(), Event("view selected [b* c]"),
                           Debug("Selection has been modified. Sent item selection event"),
                           Event("deleted a")));
}

TEST_F(RemoteRemoveItem, OfAnUnknownIdOrAnUnreadableItemDoesNothing) {
    FillWithThree();
    for (const std::string& payload : {ItemBytes("Alpha", "d"), DAMAGED, std::string()}) {
        Forget();
        EXPECT_EQ(Call(REMOVE_ITEM, payload), "");
        EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: RemoveItem")));
    }
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C);
}

TEST_F(RemoteRemoveItem, OfAnUnreadableItemRemovesTheOneWithoutId) {
    Call(ADD_ITEMS, A + ItemBytes("nameless", ""));
    Call(REMOVE_ITEM, DAMAGED);
    EXPECT_EQ(Call(GET_ALL_ITEMS), A);
}

TEST_F(RemoteRemoveItem, KeepsTheOrderOfTheOtherOwnedItems) {
    FillWithThree();
    Call(REMOVE_ITEM, A);
    const DeletionRecorder recorder(model);
    ClearLog();
    Call(REMOVE_ALL_ITEMS);
    ASSERT_GE(Log().size(), 2U);
    EXPECT_THAT(std::vector<LogLine>(Log().end() - 2, Log().end()),
                ElementsAre(Event("deleted b"), Event("deleted c")));
}

using RemoteModifyItem = RemoteFixture;

TEST_F(RemoteModifyItem, ReplacesInPlaceAndDeletesTheOldItemAfterAllNotifications) {
    FillWithThree();
    {
        const DeletionRecorder recorder(model);
        EXPECT_EQ(Call(MODIFY_ITEM, ItemBytes("whatever", "a") + ItemBytes("Delta", "d")), "");
    }
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Remote call: ModifyItem"),
                    Debug("Replacing item name: Alpha, uniqueId: a with name: Delta, "
                          "uniqueId: d"),
                    Debug("Selection cleared"), Debug("Replaced item"), ChangeLine(), ChangeSent(),
                    Event("view changed [d* b c]"), Debug("Sent item change event"),
                    SelectionLine(), SelectionSent(), Event("view selected [d* b c]"),
                    Debug("Selection has been modified. Sent item selection event"),
                    Event("deleted a")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), ItemBytes("Delta", "d") + B + C);
}

TEST_F(RemoteModifyItem, KeepsTheReplacementsPlaceAmongTheOwnedItems) {
    FillWithThree();
    Call(MODIFY_ITEM, B + ItemBytes("Delta", "d"));
    const DeletionRecorder recorder(model);
    ClearLog();
    Call(REMOVE_ALL_ITEMS);
    ASSERT_GE(Log().size(), 3U);
    EXPECT_THAT(std::vector<LogLine>(Log().end() - 3, Log().end()),
                ElementsAre(Event("deleted a"), Event("deleted d"), Event("deleted c")));
}

TEST_F(RemoteModifyItem, IsLoggedByTheStepThatReplacesOrRemoves) {
    FillWithThree();
    Call(MODIFY_ITEM, B + ItemBytes("Delta", "d"));
    EXPECT_EQ(LogFunctions().at(1), "PrivateModifyItem");
    ClearLog();
    Call(MODIFY_ITEM, A + A);
    EXPECT_EQ(LogFunctions().at(1), "PrivateRemoveItem");
}

TEST_F(RemoteModifyItem, OfAnUnknownItemDoesNothing) {
    FillWithThree();
    EXPECT_EQ(Call(MODIFY_ITEM, ItemBytes("", "x") + ItemBytes("Delta", "d")), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: ModifyItem")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C);
}

TEST_F(RemoteModifyItem, UnderTheSameIdRemovesTheItem) {
    FillWithThree();
    EXPECT_EQ(Call(MODIFY_ITEM, B + ItemBytes("New name", "b")), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: ModifyItem"),
                                   Debug("Removing item name: Beta, uniqueId: b"),
                                   Debug("Removed item form list"), ChangeLine(), ChangeSent(),
                                   Event("view changed [a* c]"), Debug("Sent item change event")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + C);
}

TEST_F(RemoteModifyItem, UnderAnotherItemsIdRemovesTheOldItem) {
    FillWithThree();
    Call(MODIFY_ITEM, B + C);
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + C);
}

TEST_F(RemoteModifyItem, UnderTheIdOfAnUnlistedDuplicateRemovesTheOldItemToo) {
    Call(ADD_ITEMS, A + B + ItemBytes("Again", "a"));
    Call(REMOVE_ITEM, A);
    ASSERT_EQ(Call(GET_ALL_ITEMS), B);
    Call(MODIFY_ITEM, B + A);
    EXPECT_EQ(Call(GET_ALL_ITEMS), "");
}

TEST_F(RemoteModifyItem, UnderAKnownIdLeavesTheListAloneWhenTheOldItemIsUnknown) {
    FillWithThree();
    EXPECT_EQ(Call(MODIFY_ITEM, ItemBytes("", "x") + C), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: ModifyItem")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C);
}

TEST_F(RemoteModifyItem, TakesAnUnreadableNewItemForAnEmptyOne) {
    FillWithThree();
    EXPECT_EQ(Call(MODIFY_ITEM, B + DAMAGED), "");
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + ItemBytes("", "") + C);
}

TEST_F(RemoteModifyItem, OfTwoUnreadableItemsDoesNothing) {
    FillWithThree();
    for (const std::string& payload : {DAMAGED, std::string(), Length(0xFFFFFFFFUL)}) {
        ClearLog();
        EXPECT_EQ(Call(MODIFY_ITEM, payload), "");
        EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: ModifyItem")));
    }
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C);
}

TEST_F(RemoteModifyItem, IgnoresSurplusBytes) {
    FillWithThree();
    Call(MODIFY_ITEM, A + ItemBytes("Delta", "d") + B + "surplus");
    EXPECT_EQ(Call(GET_ALL_ITEMS), ItemBytes("Delta", "d") + B + C);
}

/// Keeps an item and reads it during each event, as a row on the screen does.
class RowOf : public ItemSelectionListener, public ItemChangeListener {
public:
    explicit RowOf(AppListItem* item) : m_item(item) {}
    void ItemSelected(AppListModel* /*model*/) override { Read(); }
    void ItemChanged(AppListModel* /*model*/) override { Read(); }

    std::vector<std::string> reads;

private:
    void Read() { reads.push_back(m_item->GetVisibleName() + "/" + m_item->GetUnigueId()); }
    AppListItem* m_item;
};

using RemoteItem = RemoteFixture;

TEST_F(RemoteItem, CanBeReadByListenersWhileItIsGoing) {
    const std::string longName(100, 'n');
    for (const int function : {REMOVE_ITEM, MODIFY_ITEM, REMOVE_ALL_ITEMS}) {
        Call(ADD_ITEMS, ItemBytes(longName, "old"));
        RowOf row(Listed(0));
        local->AddItemSelectionListener(&row);
        local->AddItemChangeListener(&row);
        Call(function, ItemBytes("", "old") + A);
        EXPECT_THAT(row.reads, ElementsAre(longName + "/old", longName + "/old"));
        local->RemoveItemSelectionListener(&row);
        local->RemoveItemChangeListener(&row);
        Call(REMOVE_ALL_ITEMS);
    }
}

}  // namespace
}  // namespace applist::test
