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

using RemoteGetSelection = RemoteFixture;

TEST_F(RemoteGetSelection, ReturnsTheSelectedItemsBytes) {
    FillWithThree();
    Call(SET_SELECTION, B);
    Forget();
    EXPECT_EQ(Call(GET_SELECTION, "ignored"), B);
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetSelection. Selected item name: Beta, "
                                         "uniqueId: b")));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(RemoteGetSelection, ReturnsAnEmptyItemWhenNothingIsSelected) {
    EXPECT_EQ(Call(GET_SELECTION), std::string(8, '\0'));
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetSelection. Selected item name: , "
                                         "uniqueId: ")));
}

TEST_F(RemoteGetSelection, KeepsZerosThatTheLogCutsOff) {
    const std::string item = ItemBytes(std::string("We\0ather", 8), std::string("\0w1", 3));
    Call(ADD_ITEMS, item);
    ClearLog();
    EXPECT_EQ(Call(GET_SELECTION), item);
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetSelection. Selected item name: We, "
                                         "uniqueId: ")));
}

/// The remote protocol over a model whose answers the test sets.
class RemoteReadOfAnyModel : public testing::Test {
protected:
    RemoteReadOfAnyModel() { ClearLog(); }

    std::string Call(int functionId) {
        return Text(local.OnMessageReceive(functionId, Bytes("ignored")));
    }

    RecordingListModel model;
    LocalAppListModel local{&model};
};

TEST_F(RemoteReadOfAnyModel, AsksForTheSelectionForEachUseOfIt) {
    DefaultAppListItem item("Beta", "b");
    model.selection = &item;
    EXPECT_EQ(Call(GET_SELECTION), ItemBytes("Beta", "b"));
    EXPECT_THAT(Log(), ElementsAre(Event("GetSelection"), Event("GetSelection"),
                                   Debug("Remote call: GetSelection. Selected item name: Beta, "
                                         "uniqueId: b"),
                                   Event("GetSelection")));
}

TEST_F(RemoteReadOfAnyModel, AnswersEmptyWhenTheModelHasNoSelectionItem) {
    model.selection = nullptr;
    EXPECT_EQ(Call(GET_SELECTION), "");
    EXPECT_THAT(Log(),
                ElementsAre(Event("GetSelection"), Event("GetSelection"),
                            Debug("Remote call: GetSelection. Selected item name: , uniqueId: "),
                            Event("GetSelection"),
                            Error("The model returned null for its selection. The response stays "
                                  "empty")));
}

TEST_F(RemoteReadOfAnyModel, WritesAnyKindOfItem) {
    DefaultAppListItem first("Beta", "b");
    DefaultAppListItem second("", "");
    model.items = {&first, &second};
    EXPECT_EQ(Call(GET_ALL_ITEMS), ItemBytes("Beta", "b") + ItemBytes("", ""));
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetAllItems"), Event("GetAllItems")));
}

using RemoteGetAllItems = RemoteFixture;

TEST_F(RemoteGetAllItems, ReturnsTheItemsBackToBackInListOrder) {
    Call(ADD_ITEMS, C + A);
    Call(ADD_ITEM_AT_END, B);
    Forget();
    EXPECT_EQ(Call(GET_ALL_ITEMS, "ignored"), C + A + B);
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetAllItems")));
    EXPECT_THAT(TheTransport().sent, IsEmpty());
}

TEST_F(RemoteGetAllItems, ReturnsNoBytesForAnEmptyList) {
    EXPECT_EQ(Call(GET_ALL_ITEMS), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("Remote call: GetAllItems")));
}

TEST_F(RemoteGetAllItems, CanBeSentBackAsAddItems) {
    FillWithThree();
    const std::string all = Call(GET_ALL_ITEMS);
    Call(REMOVE_ALL_ITEMS);
    Call(ADD_ITEMS, all);
    EXPECT_EQ(Call(GET_ALL_ITEMS), all);
}

}  // namespace
}  // namespace applist::test
