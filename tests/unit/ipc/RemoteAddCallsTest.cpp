// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>

#include "unit/ipc/RemoteFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using RemoteAddItems = RemoteFixture;

TEST_F(RemoteAddItems, ListsTheBatchWithOneChangeAndFillsTheEmptySelection) {
    EXPECT_EQ(Call(ADD_ITEMS, A + B), "");
    EXPECT_THAT(
        Log(), ElementsAre(Debug("Remote call: AddItems"),
                           Debug(" - RemoteAppListItem name: Alpha, uniqueId: a"),
                           Debug(" - RemoteAppListItem name: Beta, uniqueId: b"), Debug("AddItems"),
                           ChangeLine(), ChangeSent(), Event("view changed [a b]"),
                           Debug("There is not selected item. Make newly added Item selected"),
                           SelectionLine(), SelectionSent(), Event("view selected [a* b]"),
                           Debug("2 items has been added to Applist")));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{1, 0, 0, 0}, std::nullopt},
                                                 SentNotification{{2, 0, 0, 0}, std::nullopt}));
}

TEST_F(RemoteAddItems, WithoutItemsStillReachesTheModel) {
    EXPECT_EQ(Call(ADD_ITEMS), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: AddItems"), Debug("AddItems"),
                                   Debug("0 items has been added to Applist")));
}

TEST_F(RemoteAddItems, CountsTheDuplicatesThatTheModelSkips) {
    FillWithThree();
    EXPECT_EQ(Call(ADD_ITEMS, ItemBytes("Again", "a")), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: AddItems"),
                                   Debug(" - RemoteAppListItem name: Again, uniqueId: a"),
                                   Debug("AddItems"), Debug("1 items has been added to Applist")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C);
}

TEST_F(RemoteAddItems, KeepsADuplicateOfTheSameBatchUntilItsIdIsRemoved) {
    EXPECT_EQ(Call(ADD_ITEMS, A + B + ItemBytes("Again", "a")), "");
    EXPECT_EQ(Log().back(), Debug("3 items has been added to Applist"));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B);
    Call(REMOVE_ITEM, A);
    ClearLog();
    Call(REMOVE_ITEM, A);
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: RemoveItem"),
                                   Debug("Removing item name: Again, uniqueId: a")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), B);
}

TEST_F(RemoteAddItems, StopsAtTheFirstUnreadableItem) {
    Call(ADD_ITEMS, A + B + DAMAGED);
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B);
}

TEST_F(RemoteAddItems, IgnoresSurplusBytes) {
    Call(ADD_ITEMS, A + "abc");
    EXPECT_EQ(Call(GET_ALL_ITEMS), A);
    EXPECT_EQ(TheTransport().sent.size(), 2U);
}

using RemoteAddItemAtEnd = RemoteFixture;

TEST_F(RemoteAddItemAtEnd, AppendsTheItem) {
    FillWithThree();
    EXPECT_EQ(Call(ADD_ITEM_AT_END, ItemBytes("Delta", "d")), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: AddItemAtEnd"),
                                   Debug("New applist item is: [name: Delta, unique id: d]"),
                                   ChangeLine(), ChangeSent(), Event("view changed [a* b c d]")));
}

TEST_F(RemoteAddItemAtEnd, OfAListedIdSelectsTheDuplicateWhenNothingIsSelected) {
    FillWithThree();
    Call(SET_SELECTION);
    Forget();
    EXPECT_EQ(Call(ADD_ITEM_AT_END, ItemBytes("Again", "b")), "");
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Remote call: AddItemAtEnd"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            SelectionLine(), SelectionSent(), Event("view selected [a b c] ~b")));
    // The duplicate is kept until its id is removed.
    EXPECT_EQ(Call(GET_SELECTION), ItemBytes("Again", "b"));
}

TEST_F(RemoteAddItemAtEnd, OfAnUnreadableItemAppendsAnEmptyOne) {
    FillWithThree();
    EXPECT_EQ(Call(ADD_ITEM_AT_END, DAMAGED), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: AddItemAtEnd"),
                                   Debug("New applist item is: [name: , unique id: ]"),
                                   ChangeLine(), ChangeSent(), Event("view changed [a* b c ]")));
    EXPECT_EQ(Call(GET_ALL_ITEMS), A + B + C + ItemBytes("", ""));
}

TEST_F(RemoteAddItemAtEnd, TakesTheFirstItemOnly) {
    Call(ADD_ITEM_AT_END, A + B);
    EXPECT_EQ(Call(GET_ALL_ITEMS), A);
}

}  // namespace
}  // namespace applist::test
