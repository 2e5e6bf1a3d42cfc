// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <climits>
#include <string>

#include "unit/ipc/RemoteFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using RemoteCall = RemoteFixture;

TEST_F(RemoteCall, OfAnUnknownFunctionIsLoggedAndAnsweredEmpty) {
    FillWithThree();
    for (const int id : {1999, 2009, 0, 1, -1, -2000, 65536 + 2003, INT_MAX, INT_MIN}) {
        ClearLog();
        EXPECT_EQ(Call(id, A), "");
        EXPECT_THAT(Log(), ElementsAre(Debug("Call to undefined function: " + std::to_string(id))));
    }
    EXPECT_EQ(model.GetItemsCount(), 3);
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(RemoteCall, OfSetClickedIsOnlyLogged) {
    FillWithThree();
    EXPECT_EQ(Call(SET_CLICKED, A), "");
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Remote call: SetClicked. This function is not implemented")));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(RemoteCall, ArrivesThroughTheTransportWithItsEventsBeforeTheReply) {
    std::vector<char> frame = Bytes(A + Length(ADD_ITEM_AT_END));
    EXPECT_THAT(TheTransport().live->HandleMessage(frame), IsEmpty());
    Note("reply");
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("IPC HandleMessage"), Debug("Remote call: AddItemAtEnd"),
                    Debug("New applist item is: [name: Alpha, unique id: a]"), ChangeLine(),
                    ChangeSent(), Event("view changed [a]"),
                    Debug("There is not selected item. Make newly added Item selected"),
                    SelectionLine(), SelectionSent(), Event("view selected [a*]"), Event("reply")));
}

TEST_F(RemoteCall, IsAnsweredThroughTheTransport) {
    FillWithThree();
    std::vector<char> frame = Bytes(Length(GET_ALL_ITEMS));
    EXPECT_EQ(Text(TheTransport().live->HandleMessage(frame)), A + B + C);
}

using RemoteSetSelection = RemoteFixture;

TEST_F(RemoteSetSelection, MovesToTheListedItemAndIsEchoedAsAnEvent) {
    FillWithThree();
    EXPECT_EQ(Call(SET_SELECTION, ItemBytes("whatever", "b")), "");
    EXPECT_EQ(model.GetSelection(), Listed(1));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Remote call: SetSelection"),
                            Debug("Selected item name: whatever, uniqueId: b"), SelectionLine(),
                            SelectionSent(), Event("view selected [a b* c]")));
    EXPECT_THAT(TheTransport().sent, ElementsAre(SentNotification{{2, 0, 0, 0}, std::nullopt}));
}

TEST_F(RemoteSetSelection, OfAnUnreadableItemClearsToo) {
    for (const std::string& payload : {std::string(), DAMAGED, Length(0xFFFFFFFFUL)}) {
        FillWithThree();
        Call(SET_SELECTION, B);
        ClearLog();
        EXPECT_EQ(Call(SET_SELECTION, payload), "");
        EXPECT_EQ(StateOf(&model), "[a b c]");
        EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: SetSelection"),
                                       Debug("Selected item name: , uniqueId: ")));
    }
}

TEST_F(RemoteSetSelection, IgnoresSurplusBytes) {
    FillWithThree();
    EXPECT_EQ(Call(SET_SELECTION, C + A + "surplus"), "");
    EXPECT_EQ(model.GetSelection(), Listed(2));
}

}  // namespace
}  // namespace applist::test
