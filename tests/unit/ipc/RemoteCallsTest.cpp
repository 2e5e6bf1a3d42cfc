// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The calls of the middleware, over the real list.
#include <climits>
#include <memory>
#include <sstream>
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

namespace applist::test {
namespace {

const std::vector<std::string> FUNCTIONS{"SetSelection",   "GetSelection", "GetAllItems",
                                         "RemoveAllItems", "AddItems",     "AddItemAtEnd",
                                         "SetClicked",     "RemoveItem",   "ModifyItem"};

int IdOf(const std::string& function) {
    const auto found = std::find(FUNCTIONS.begin(), FUNCTIONS.end(), function);
    return 2000 + static_cast<int>(found - FUNCTIONS.begin());
}

/// The bytes of one word: an item as NAME/ID, a, b or c, an item truncated within its id, a text of
/// a length that no message has, or other bytes after a plus sign.
std::string Encoded(const std::string& word) {
    if (word == "TRUNCATED") {
        return ItemBytes("Alpha", "a").substr(0, 12);
    }
    if (word == "HUGE") {
        return Length(0xFFFFFFFFUL);
    }
    if (word[0] == '+') {
        return word.substr(1);
    }
    const size_t slash = word.find('/');
    return slash != std::string::npos ? ItemBytes(word.substr(0, slash), word.substr(slash + 1))
                                      : ItemBytes(word == "a"   ? "Alpha"
                                                  : word == "b" ? "Beta"
                                                                : "Gamma",
                                                  word);
}

std::string EncodedWords(std::istream& words) {
    std::string bytes;
    for (std::string word; words >> word;) {
        bytes += Encoded(word);
    }
    return bytes;
}

/// A list in words, "a b* c ~Again/a": a star follows the selected item, and a selected item that
/// is not listed has a tilde.
struct List {
    explicit List(const std::string& text) {
        std::istringstream words(text);
        for (std::string word; words >> word;) {
            if (word.back() == '*') {
                word.pop_back();
                selection = Encoded(word);
            }
            if (word[0] == '~') {
                selection = Encoded(word.substr(1));
            } else {
                items += Encoded(word);
            }
        }
    }
    std::string items;
    std::string selection = ItemBytes("", "");
};

/// Calls of the middleware and what follows from them.
struct Row {
    const char* name;
    List before;
    /// The functions with their arguments as words: "AddItems a b; RemoveItem a".
    std::string calls;
    List after;
    /// The log of the last call. "changed [..]" and "selected [..]" are short for an event: the log
    /// line and the notification for the middleware, then the event for the screen.
    std::vector<std::string> log;
};

// A call is formatted more densely than a list in braces.
Row Case(const char* name, const char* before, std::string calls, const char* after,
         std::vector<std::string> log) {
    return {name, List(before), std::move(calls), List(after), std::move(log)};
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << row.calls;
}

std::string Expanded(const std::vector<std::string>& log) {
    std::vector<std::string> lines;
    for (const std::string& line : log) {
        if (line.starts_with("changed ")) {
            lines.insert(lines.end(), {"ItemChanged: Sending Item Change Event to remote object",
                                       "notify all: 01 00 00 00", "view " + line});
        } else if (line.starts_with("selected ")) {
            lines.insert(lines.end(),
                         {"ItemSelected: Sending Item Selection Event to remote object",
                          "notify all: 02 00 00 00", "view " + line});
        } else {
            lines.push_back(line);
        }
    }
    return Lines(lines);
}

/// Notes the deletion of each item that is listed at its construction, as "deleted ID".
class DeletionRecorder {
public:
    explicit DeletionRecorder(AppListModel& model) {
        for (AppListItem* item : model.GetAllItems()) {
            m_items.push_back({item, "deleted " + item->GetUnigueId()});
        }
    }

private:
    void Report(const void* block) const {
        for (const auto& [item, event] : m_items) {
            if (item == block) {
                Note(event);
            }
        }
    }

    std::vector<std::pair<const void*, std::string>> m_items;
    DeletionWatch m_watch{[this](const void* block) { Report(block); }};
};

/// The remote protocol over the real list, with a view that listens as the screen does.
class RemoteFixture : public testing::Test {
protected:
    RemoteFixture() {
        TheTransport() = FakeTransport{};
        local = std::make_unique<LocalAppListModel>(&model);
        view.ListenTo(*local);
        ClearLog();
    }

    std::string Call(int function, const std::string& payload = "") {
        return Text(local->OnMessageReceive(function, Bytes(payload)));
    }

    std::string Call(const std::string& text) {
        std::istringstream words(text);
        std::string function;
        words >> function;
        return Call(IdOf(function), EncodedWords(words));
    }

    void Fill(const List& list) {
        Call(IdOf("AddItems"), list.items);
        Call(IdOf("SetSelection"), list.selection);
    }

    RecordingListener view{"view"};
    DefaultAppListModel model;
    std::unique_ptr<LocalAppListModel> local;
};

class RemoteCalls : public RemoteFixture, public testing::WithParamInterface<Row> {};

TEST_P(RemoteCalls, ChangeTheListAndNotifyTheMiddlewareBeforeTheScreen) {
    const Row& row = GetParam();
    Fill(row.before);
    std::istringstream calls(row.calls);
    std::string reply;
    for (std::string call; std::getline(calls, call, ';');) {
        ClearLog();
        const DeletionRecorder recorder(model);
        reply = Call(call);
    }
    EXPECT_EQ(LogText(), Expanded(row.log));
    const std::string expectedReply =
        row.calls.find("GetSelection") != std::string::npos  ? row.after.selection
        : row.calls.find("GetAllItems") != std::string::npos ? row.after.items
                                                             : "";
    EXPECT_EQ(reply, expectedReply);
    EXPECT_EQ(Call("GetAllItems"), row.after.items);
    EXPECT_EQ(Call("GetSelection"), row.after.selection);
}

auto Name = [](const auto& row) { return row.param.name; };

const std::string ADD = "CallAddItems: Remote call: AddItems";
const std::string APPEND = "CallAddItemAtEnd: Remote call: AddItemAtEnd";
const std::string REMOVE = "CallRemoveItem: Remote call: RemoveItem";
const std::string MODIFY = "CallModifyItem: Remote call: ModifyItem";
const std::string CLEAR = "CallRemoveAllItems: Remote call: RemoveAllItems";
const std::string CLEARING = "CallRemoveAllItems: Removing items";
const std::string SELECT = "CallSetSelection: Remote call: SetSelection";
const std::string NONE_SELECTED = "There is not selected item. Make newly added Item selected";

std::string Read(const std::string& name, const std::string& id) {
    return "CallAddItems:  - RemoteAppListItem name: " + name + ", uniqueId: " + id;
}

std::string Added(int count) {
    return "CallAddItems: " + std::to_string(count) + " items has been added to Applist";
}

const std::vector<std::string> A_AND_B_ADDED{ADD,
                                             Read("Alpha", "a"),
                                             Read("Beta", "b"),
                                             "AddItems: AddItems",
                                             "changed [a b]",
                                             "AddItems: " + NONE_SELECTED,
                                             "selected [a* b]",
                                             Added(2)};

INSTANTIATE_TEST_SUITE_P(
    AddItems, RemoteCalls,
    testing::Values(Case("ListsTheBatchWithOneChangeAndSelectsTheFront", "", "AddItems a b", "a* b",
                         A_AND_B_ADDED),
                    Case("StopsAtTheFirstTruncatedItem", "", "AddItems a b TRUNCATED", "a* b",
                         A_AND_B_ADDED),
                    Case("IgnoresSurplusBytes", "", "AddItems a b +abc", "a* b", A_AND_B_ADDED),
                    Case("WithoutItemsReachesTheModel", "", "AddItems", "",
                         {ADD, "AddItems: AddItems", Added(0)}),
                    Case("CountsTheDuplicatesThatTheModelSkips", "a* b c", "AddItems Again/a",
                         "a* b c", {ADD, Read("Again", "a"), "AddItems: AddItems", Added(1)}),
                    Case("KeepsADuplicateUntilItsIdIsRemoved", "",
                         "AddItems a b Again/a; RemoveItem a; RemoveItem a", "b*",
                         {REMOVE, "PrivateRemoveItem: Removing item name: Again, uniqueId: a"})),
    Name);

std::string NewItem(const std::string& name, const std::string& id) {
    return "AddItemAtEnd: New applist item is: [name: " + name + ", unique id: " + id + "]";
}

INSTANTIATE_TEST_SUITE_P(
    AddItemAtEnd, RemoteCalls,
    testing::Values(Case("AppendsTheItem", "a* b c", "AddItemAtEnd Delta/d", "a* b c Delta/d",
                         {APPEND, NewItem("Delta", "d"), "changed [a* b c d]"}),
                    Case("SelectsADuplicateThatTheModelDoesNotList", "a b c",
                         "AddItemAtEnd Again/b", "a b c ~Again/b",
                         {APPEND, "AddItemAtEnd: " + NONE_SELECTED, "selected [a b c] ~b"}),
                    Case("AppendsAnEmptyItemForATruncatedOne", "a* b c", "AddItemAtEnd TRUNCATED",
                         "a* b c /", {APPEND, NewItem("", ""), "changed [a* b c ]"}),
                    Case("TakesTheFirstItemOnly", "", "AddItemAtEnd a b", "a*",
                         {APPEND, NewItem("Alpha", "a"), "changed [a]",
                          "AddItemAtEnd: " + NONE_SELECTED, "selected [a*]"})),
    Name);

const std::string NO_ITEM = "CallSetSelection: Selected item name: , uniqueId: ";

INSTANTIATE_TEST_SUITE_P(
    Selection, RemoteCalls,
    testing::Values(
        Case("MovesToTheListedItemAndIsEchoedAsAnEvent", "a* b c", "SetSelection whatever/b",
             "a b* c",
             {SELECT, "CallSetSelection: Selected item name: whatever, uniqueId: b",
              "selected [a b* c]"}),
        Case("IgnoresSurplusBytes", "a* b c", "SetSelection c a +surplus", "a b c*",
             {SELECT, "CallSetSelection: Selected item name: Gamma, uniqueId: c",
              "selected [a b c*]"}),
        Case("IsClearedByNoBytes", "a b* c", "SetSelection", "a b c", {SELECT, NO_ITEM}),
        Case("IsClearedByATruncatedItem", "a b* c", "SetSelection TRUNCATED", "a b c",
             {SELECT, NO_ITEM}),
        Case("IsClearedByALengthBeyondTheMessage", "a b* c", "SetSelection HUGE", "a b c",
             {SELECT, NO_ITEM}),
        Case(
            "IsReturnedAsOneItem", "a b* c", "GetSelection +ignored", "a b* c",
            {"CallGetSelection: Remote call: GetSelection. Selected item name: Beta, uniqueId: b"}),
        Case("IsReturnedAsAnEmptyItemIfNothingIsSelected", "", "GetSelection", "",
             {"CallGetSelection: Remote call: GetSelection. Selected item name: , uniqueId: "})),
    Name);

INSTANTIATE_TEST_SUITE_P(
    OtherFunctions, RemoteCalls,
    testing::Values(Case("ReturnTheItemsInListOrder", "c* a",
                         "AddItemAtEnd b; GetAllItems +ignored", "c* a b",
                         {"CallGetAllItems: Remote call: GetAllItems"}),
                    Case("ReturnNoBytesForAnEmptyList", "", "GetAllItems", "",
                         {"CallGetAllItems: Remote call: GetAllItems"}),
                    Case("LogAClickOnly", "a* b c", "SetClicked a", "a* b c",
                         {"CallSetClicked: Remote call: SetClicked. This function is not "
                          "implemented"})),
    Name);

std::string Removing(const std::string& name, const std::string& id) {
    return "PrivateRemoveItem: Removing item name: " + name + ", uniqueId: " + id;
}

const std::string REMOVED = "RemoveItem: Removed item form list";
const std::string REMOVE_SENT = "RemoveItem: Sent item change event";
const std::string REMOVE_SELECTED =
    "RemoveItem: Selection has been modified. Sent item selection event";

INSTANTIATE_TEST_SUITE_P(
    Removal, RemoteCalls,
    testing::Values(
        Case("OfAllDeletesTheItemsAfterTheEvents", "a* b c", "RemoveAllItems +ignored", "",
             {CLEAR, "changed []", "selected []", CLEARING, "deleted a", "deleted b", "deleted c"}),
        Case("OfAllSendsNoEventForAnEmptyList", "", "RemoveAllItems", "", {CLEAR, CLEARING}),
        Case("OfAllForgetsTheDuplicatesToo", "", "AddItems a a; RemoveAllItems; RemoveItem a", "",
             {REMOVE}),
        Case("DeletesTheItemAfterTheEvents", "a* b c", "RemoveItem whatever/a", "b* c",
             {REMOVE, Removing("Alpha", "a"), "FindNearestItem: Next element is nearest",
              "RemoveItem: Found new item to be selected", REMOVED, "changed [b* c]", REMOVE_SENT,
              "selected [b* c]", REMOVE_SELECTED, "deleted a"}),
        Case("IgnoresAnUnknownId", "a* b c", "RemoveItem Alpha/d", "a* b c", {REMOVE}),
        Case("IgnoresATruncatedItem", "a* b c", "RemoveItem TRUNCATED", "a* b c", {REMOVE}),
        Case("IgnoresACallWithoutBytes", "a* b c", "RemoveItem", "a* b c", {REMOVE}),
        Case("OfATruncatedItemRemovesTheOneWithoutId", "a* nameless/", "RemoveItem TRUNCATED", "a*",
             {REMOVE, Removing("nameless", ""), REMOVED, "changed [a*]", REMOVE_SENT, "deleted "}),
        Case("KeepsTheOrderOfTheOtherOwnedItems", "a* b c", "RemoveItem a; RemoveAllItems", "",
             {CLEAR, "changed []", "selected []", CLEARING, "deleted b", "deleted c"})),
    Name);

std::string Replacing(const std::string& name, const std::string& id, const std::string& newName,
                      const std::string& newId) {
    return "PrivateModifyItem: Replacing item name: " + name + ", uniqueId: " + id +
           " with name: " + newName + ", uniqueId: " + newId;
}

const std::string REPLACED = "ModifyItem: Replaced item";
const std::string MODIFY_SENT = "ModifyItem: Sent item change event";
const std::vector<std::string> A_REPLACED{
    MODIFY,
    Replacing("Alpha", "a", "Delta", "d"),
    "ModifyItem: Selection cleared",
    REPLACED,
    "changed [d* b c]",
    MODIFY_SENT,
    "selected [d* b c]",
    "ModifyItem: Selection has been modified. Sent item selection event",
    "deleted a"};
const std::vector<std::string> B_REMOVED{MODIFY,           Removing("Beta", "b"), REMOVED,
                                         "changed [a* c]", REMOVE_SENT,           "deleted b"};

INSTANTIATE_TEST_SUITE_P(
    Replacement, RemoteCalls,
    testing::Values(
        Case("KeepsThePositionAndDeletesTheOldItemAfterTheEvents", "a* b c",
             "ModifyItem whatever/a Delta/d", "Delta/d* b c", A_REPLACED),
        Case("IgnoresSurplusBytes", "a* b c", "ModifyItem a Delta/d b +surplus", "Delta/d* b c",
             A_REPLACED),
        Case("KeepsItsPlaceAmongTheOwnedItems", "a* b c", "ModifyItem b Delta/d; RemoveAllItems",
             "",
             {CLEAR, "changed []", "selected []", CLEARING, "deleted a", "deleted d", "deleted c"}),
        Case("OfAnUnknownItemDoesNothing", "a* b c", "ModifyItem /x Delta/d", "a* b c", {MODIFY}),
        Case("OfAnUnknownItemByAKnownIdDoesNothing", "a* b c", "ModifyItem /x c", "a* b c",
             {MODIFY}),
        Case("ByTheSameIdRemovesTheItem", "a* b c", "ModifyItem b New/b", "a* c", B_REMOVED),
        Case("ByTheIdOfAnotherItemRemovesTheOldItem", "a* b c", "ModifyItem b c", "a* c",
             B_REMOVED),
        Case("ByTheIdOfAnUnlistedDuplicateRemovesTheOldItem", "",
             "AddItems a b Again/a; RemoveItem a; ModifyItem b a", "",
             {MODIFY, Removing("Beta", "b"),
              "FindNearestItem: Item list is empty or there is one item that can not be qualified "
              "as nearest",
              "RemoveItem: Make empty selection", REMOVED, "changed []", REMOVE_SENT, "selected []",
              REMOVE_SELECTED, "deleted b"}),
        Case("ByATruncatedItemIsAnEmptyItem", "a* b c", "ModifyItem b TRUNCATED", "a* / c",
             {MODIFY, Replacing("Beta", "b", "", ""), REPLACED, "changed [a*  c]", MODIFY_SENT,
              "deleted b"}),
        Case("OfATruncatedItemDoesNothing", "a* b c", "ModifyItem TRUNCATED", "a* b c", {MODIFY}),
        Case("WithoutBytesDoesNothing", "a* b c", "ModifyItem", "a* b c", {MODIFY}),
        Case("WithALengthBeyondTheMessageDoesNothing", "a* b c", "ModifyItem HUGE", "a* b c",
             {MODIFY})),
    Name);

using RemoteCall = RemoteFixture;

TEST_F(RemoteCall, OfAnUnknownFunctionIsLoggedAndAnsweredEmpty) {
    Fill(List("a* b c"));
    for (const int id : {1999, 2009, 0, 1, -1, -2000, 65536 + 2003, INT_MAX, INT_MIN}) {
        ClearLog();
        EXPECT_EQ(Call(id, ItemBytes("Alpha", "a")), "");
        EXPECT_EQ(LogText(),
                  "OnMessageReceive: Call to undefined function: " + std::to_string(id) + "\n");
    }
    EXPECT_EQ(StateOf(&model), "[a* b c]");
}

TEST_F(RemoteCall, ArrivesThroughTheTransportWithItsEventsBeforeTheReply) {
    const auto deliver = [](const std::string& bytes) {
        std::vector<char> frame = Bytes(bytes);
        return Text(TheTransport().live->HandleMessage(frame));
    };
    EXPECT_EQ(deliver(ItemBytes("Alpha", "a") + Length(2005)), "");
    Note("reply");
    EXPECT_EQ(LogText(), Expanded({"HandleMessage: IPC HandleMessage", APPEND,
                                   NewItem("Alpha", "a"), "changed [a]",
                                   "AddItemAtEnd: " + NONE_SELECTED, "selected [a*]", "reply"}));
    EXPECT_EQ(deliver(Length(2002)), ItemBytes("Alpha", "a"));
}

TEST_F(RemoteCall, ForTheSelectionReturnsZerosThatTheLogCutsOff) {
    const std::string item = ItemBytes(std::string("We\0ather", 8), std::string("\0w1", 3));
    Call(IdOf("AddItems"), item);
    ClearLog();
    EXPECT_EQ(Call("GetSelection"), item);
    EXPECT_EQ(LogText(),
              "CallGetSelection: Remote call: GetSelection. Selected item name: We, uniqueId: \n");
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

TEST_F(RemoteCall, LetsListenersReadAnItemThatItRemoves) {
    const std::string old = std::string(100, 'n') + "/old";
    for (const char* call : {"RemoveItem /old", "ModifyItem /old a", "RemoveAllItems"}) {
        Call("AddItems " + old);
        RowOf row(model.GetAllItems().at(0));
        local->AddItemSelectionListener(&row);
        local->AddItemChangeListener(&row);
        Call(call);
        EXPECT_THAT(row.reads, ElementsAre(old, old));
        local->RemoveItemSelectionListener(&row);
        local->RemoveItemChangeListener(&row);
        Call("RemoveAllItems");
    }
}

/// The remote protocol over a model whose answers the test sets.
class RemoteReadOfAnyModel : public testing::Test {
protected:
    RemoteReadOfAnyModel() {
        model.onCall = [](const std::string& call) { Note(call); };
        ClearLog();
    }
    std::string Call(const std::string& function) {
        return Text(local.OnMessageReceive(IdOf(function), Bytes("ignored")));
    }
    FakeListModel model;
    LocalAppListModel local{&model};
    DefaultAppListItem beta{"Beta", "b"};
    DefaultAppListItem empty;
};

TEST_F(RemoteReadOfAnyModel, AsksForTheSelectionForEachUseOfIt) {
    model.selection = &beta;
    EXPECT_EQ(Call("GetSelection"), ItemBytes("Beta", "b"));
    EXPECT_EQ(LogText(),
              Lines({"GetSelection", "GetSelection",
                     "CallGetSelection: Remote call: GetSelection. Selected item name: Beta, "
                     "uniqueId: b",
                     "GetSelection"}));
}

TEST_F(RemoteReadOfAnyModel, AnswersEmptyIfTheModelReturnsNoSelectionItem) {
    model.selection = nullptr;
    EXPECT_EQ(Call("GetSelection"), "");
    EXPECT_EQ(
        LogText(),
        Lines({"GetSelection", "GetSelection",
               "CallGetSelection: Remote call: GetSelection. Selected item name: , uniqueId: ",
               "GetSelection",
               "ERROR CallGetSelection: The model returned null for its selection. The "
               "response stays empty"}));
}

TEST_F(RemoteReadOfAnyModel, WritesAnyKindOfItem) {
    model.items = {&beta, &empty};
    EXPECT_EQ(Call("GetAllItems"), ItemBytes("Beta", "b") + ItemBytes("", ""));
    EXPECT_EQ(LogText(), Lines({"CallGetAllItems: Remote call: GetAllItems", "GetAllItems"}));
}

}  // namespace
}  // namespace applist::test
