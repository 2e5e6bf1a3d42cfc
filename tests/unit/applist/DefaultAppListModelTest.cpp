// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <functional>
#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/RecordingListener.h"
#include "support/AllocationWatch.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

/// A change listener that selects an item, or clears the selection if the item is null.
class Selecting : public ItemChangeListener {
public:
    explicit Selecting(AppListItem* item) : m_item(item) {}
    void ItemChanged(AppListModel* model) override { model->SetSelection(m_item); }

private:
    AppListItem* m_item;
};

/// Calls of a model and what follows from them. Items are the labels of ModelFixture::items.
struct Row {
    const char* name;
    /// The listed items, with a star after the selected one: "a b*".
    std::string before;
    /// "AddItems a b; RemoveItem a".
    std::string calls;
    /// Like before; a selection that is not listed is appended as "~c".
    std::string after;
    /// The model's lines and the events of a listener.
    std::vector<std::string> log;
    /// The item that a second listener selects on each change; "null" clears the selection.
    const char* chosen = nullptr;
};

// A call is formatted more densely than a list in braces.
Row Case(const char* name, std::string before, std::string calls, std::string after,
         std::vector<std::string> log, const char* chosen = nullptr) {
    return {name, std::move(before), std::move(calls), std::move(after), std::move(log), chosen};
}

void PrintTo(const Row& row, std::ostream* out) {
    *out << "[" << row.before << "] " << row.calls;
}

class ModelFixture : public testing::Test {
protected:
    using Items = std::vector<AppListItem*>;

    ModelFixture() {
        view.ListenTo(model);
        ClearLog();
    }

    std::string LabelOf(AppListItem* item) const {
        for (const auto& [label, named] : items) {
            if (named == item) {
                return label;
            }
        }
        return item->GetUnigueId().empty() ? "" : "?";
    }

    std::string State() {
        std::string state;
        AppListItem* selection = model.GetSelection();
        bool listed = false;
        for (AppListItem* item : model.GetAllItems()) {
            state += (state.empty() ? "" : " ") + LabelOf(item) + (item == selection ? "*" : "");
            listed = listed || item == selection;
        }
        return listed || LabelOf(selection).empty() ? state : state + " ~" + LabelOf(selection);
    }

    void Fill(const std::string& state) {
        std::istringstream labels(state);
        Items listed;
        AppListItem* selection = nullptr;
        for (std::string label; labels >> label;) {
            if (label.back() == '*') {
                label.pop_back();
                selection = items.at(label);
            }
            listed.push_back(items.at(label));
        }
        model.AddItems(listed);
        model.SetSelection(selection);
        ClearLog();
    }

    void Call(const std::string& call) {
        std::istringstream words(call);
        std::string function;
        words >> function;
        Items arguments;
        for (std::string label; words >> label;) {
            arguments.push_back(items.at(label));
        }
        functions.at(function)(arguments);
    }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    DefaultAppListItem otherA{"another object", "a"};
    DefaultAppListItem otherB{"another object", "b"};
    DefaultAppListItem otherC{"another object", "c"};
    DefaultAppListItem withoutId;
    RecordingListener view{"view"};
    DefaultAppListModel model;
    const std::map<std::string, AppListItem*> items{
        {"a", &a},       {"b", &b},       {"c", &c},         {"a'", &otherA},
        {"b'", &otherB}, {"c'", &otherC}, {"-", &withoutId}, {"null", nullptr}};
    const std::map<std::string, std::function<void(const Items&)>> functions{
        {"AddItems", [this](const Items& given) { model.AddItems(given); }},
        {"AddItemAtEnd", [this](const Items& given) { model.AddItemAtEnd(given.at(0)); }},
        {"RemoveItem", [this](const Items& given) { model.RemoveItem(given.at(0)); }},
        {"RemoveAllItems", [this](const Items&) { model.RemoveAllItems(); }},
        {"ModifyItem", [this](const Items& given) { model.ModifyItem(given.at(0), given.at(1)); }},
        {"SetSelection", [this](const Items& given) { model.SetSelection(given.at(0)); }},
        {"SetClicked", [this](const Items& given) { model.SetClicked(given.at(0)); }},
        {"FindNearestItem", [this](const Items& given) {
             AppListItem* nearest = model.FindNearestItem(given.at(0));
             Note("nearest " + (nearest != nullptr ? LabelOf(nearest) : "null"));
         }}};
};

class DefaultAppListModelCalls : public ModelFixture, public testing::WithParamInterface<Row> {};

TEST_P(DefaultAppListModelCalls, ChangeListAndSelectionAndNotifyListeners) {
    const Row& row = GetParam();
    Fill(row.before);
    Selecting second(row.chosen != nullptr ? items.at(row.chosen) : nullptr);
    if (row.chosen != nullptr) {
        model.AddItemChangeListener(&second);
        ClearLog();
    }
    std::istringstream calls(row.calls);
    for (std::string call; std::getline(calls, call, ';');) {
        Call(call);
    }
    EXPECT_EQ(State(), row.after);
    EXPECT_EQ(LogText(), Lines(row.log));
}

auto Name = [](const auto& row) { return row.param.name; };

const std::string ADDED = "AddItems: AddItems";
const std::string FRONT_SELECTED =
    "AddItems: There is not selected item. Make newly added Item selected";
const std::string NEW_SELECTED =
    "AddItemAtEnd: There is not selected item. Make newly added Item selected";
const std::string NO_NEAREST =
    "FindNearestItem: Item list is empty or there is one item that can not be qualified as nearest";
const std::string NEXT = "FindNearestItem: Next element is nearest";
const std::string PREVIOUS = "FindNearestItem: Previous element is nearest";

std::string NewItem(const std::string& name, const std::string& id) {
    return "AddItemAtEnd: New applist item is: [name: " + name + ", unique id: " + id + "]";
}

INSTANTIATE_TEST_SUITE_P(
    AddItems, DefaultAppListModelCalls,
    testing::Values(
        Case("ReportsTheBatchOnceAndThenSelectsTheFront", "", "AddItems a b", "a* b",
             {ADDED, "view changed [a b]", FRONT_SELECTED, "view selected [a* b]"}),
        Case("SkipsAnIdThatIsEarlierInTheSameBatch", "", "AddItems a b a'", "a* b",
             {ADDED, "view changed [a b]", FRONT_SELECTED, "view selected [a* b]"}),
        Case("KeepsTheSelection", "a*", "AddItems b c", "a* b c", {ADDED, "view changed [a* b c]"}),
        Case("SelectsTheFrontOfTheWholeList", "a", "AddItems b", "a* b",
             {ADDED, "view changed [a b]", FRONT_SELECTED, "view selected [a* b]"}),
        Case("SendsNoChangeIfAllIdsAreListed", "a b*", "AddItems a' b", "a b*", {ADDED}),
        Case("WithoutItemsSelectsTheFrontIfNothingIsSelected", "a b", "AddItems", "a* b",
             {ADDED, FRONT_SELECTED, "view selected [a* b]"}),
        Case("WithoutItemsDoesNotSelectInAnEmptyList", "", "AddItems", "", {ADDED}),
        Case("TreatsASelectedItemWithoutIdAsNoSelection", "", "AddItems -; AddItems a", "-* a",
             {ADDED, "view changed []", FRONT_SELECTED, "view selected [*]", ADDED,
              "view changed [* a]", FRONT_SELECTED, "view selected [* a]"}),
        Case("KeepsASelectionThatAChangeListenerMakes", "", "AddItems a b", "a b*",
             {ADDED, "view changed [a b]", "view selected [a b*]"}, "b"),
        Case("SelectsTheFrontIfAChangeListenerClearsTheSelection", "a b*", "AddItems c", "a* b c",
             {ADDED, "view changed [a b* c]", FRONT_SELECTED, "view selected [a* b c]"}, "null")),
    Name);

INSTANTIATE_TEST_SUITE_P(
    AddItemAtEnd, DefaultAppListModelCalls,
    testing::Values(
        Case("AppendsAndSelectsTheItem", "", "AddItemAtEnd a", "a*",
             {NewItem("Alpha", "a"), "view changed [a]", NEW_SELECTED, "view selected [a*]"}),
        Case("SelectsTheItemAndNotTheFront", "a b", "AddItemAtEnd c", "a b c*",
             {NewItem("Gamma", "c"), "view changed [a b c]", NEW_SELECTED,
              "view selected [a b c*]"}),
        Case("KeepsTheSelection", "a*", "AddItemAtEnd b", "a* b",
             {NewItem("Beta", "b"), "view changed [a* b]"}),
        Case("IgnoresAListedId", "a*", "AddItemAtEnd a'", "a*", {}),
        Case("SelectsADuplicateThatItDoesNotList", "a b", "AddItemAtEnd b'", "a b ~b'",
             {NEW_SELECTED, "view selected [a b] ~b"}),
        Case("KeepsASelectionThatAChangeListenerMakes", "a", "AddItemAtEnd b", "a* b",
             {NewItem("Beta", "b"), "view changed [a b]", "view selected [a* b]"}, "a"),
        Case("SelectsTheItemIfAChangeListenerClearsTheSelection", "a*", "AddItemAtEnd b", "a b*",
             {NewItem("Beta", "b"), "view changed [a* b]", NEW_SELECTED, "view selected [a b*]"},
             "null")),
    Name);

const std::string FOUND = "RemoveItem: Found new item to be selected";
const std::string REMOVED = "RemoveItem: Removed item form list";
const std::string REMOVE_SENT = "RemoveItem: Sent item change event";
const std::string REMOVE_SELECTED =
    "RemoveItem: Selection has been modified. Sent item selection event";

INSTANTIATE_TEST_SUITE_P(
    Removal, DefaultAppListModelCalls,
    testing::Values(
        Case("IgnoresAnUnlistedItem", "a* b", "RemoveItem c", "a* b", {}),
        Case("SelectsTheNextItem", "a b* c", "RemoveItem b", "a c*",
             {NEXT, FOUND, REMOVED, "view changed [a c*]", REMOVE_SENT, "view selected [a c*]",
              REMOVE_SELECTED}),
        Case("OfTheLastItemSelectsThePreviousOne", "a b c*", "RemoveItem c", "a b*",
             {PREVIOUS, FOUND, REMOVED, "view changed [a b*]", REMOVE_SENT, "view selected [a b*]",
              REMOVE_SELECTED}),
        Case("OfTheOnlyItemClearsTheSelection", "a*", "RemoveItem a", "",
             {NO_NEAREST, "RemoveItem: Make empty selection", REMOVED, "view changed []",
              REMOVE_SENT, "view selected []", REMOVE_SELECTED}),
        Case("OfAnUnselectedItemSendsNoSelection", "a b c*", "RemoveItem a", "b c*",
             {REMOVED, "view changed [b c*]", REMOVE_SENT}),
        Case("ComparesIds", "a b*", "RemoveItem a'", "b*",
             {REMOVED, "view changed [b*]", REMOVE_SENT}),
        Case("MovesASelectionThatIsNotListed", "a b", "AddItemAtEnd a'; RemoveItem a", "b*",
             {NEW_SELECTED, "view selected [a b] ~a", NEXT, FOUND, REMOVED, "view changed [b*]",
              REMOVE_SENT, "view selected [b*]", REMOVE_SELECTED}),
        Case("ReportsASelectionThatChangedBeforeAListenerClearedIt", "a* c", "RemoveItem a", "c",
             {NEXT, FOUND, REMOVED, "view changed [c*]", REMOVE_SENT, "view selected [c]",
              REMOVE_SELECTED},
             "null"),
        Case("DoesNotReportASelectionThatOnlyAListenerCleared", "a* b c", "RemoveItem b", "a c",
             {REMOVED, "view changed [a* c]", REMOVE_SENT}, "null"),
        Case("OfAllItemsIgnoresAnEmptyList", "", "RemoveAllItems", "", {}),
        Case("OfAllItemsReportsTheChangeAndThenTheSelection", "a b*", "RemoveAllItems", "",
             {"view changed []", "view selected []"}),
        Case("OfAllItemsReportsASelectionEvenIfNothingWasSelected", "a", "RemoveAllItems", "",
             {"view changed []", "view selected []"})),
    Name);

const std::string CLEARED = "ModifyItem: Selection cleared";
const std::string REPLACED = "ModifyItem: Replaced item";
const std::string MODIFY_SENT = "ModifyItem: Sent item change event";
const std::string MODIFY_SELECTED =
    "ModifyItem: Selection has been modified. Sent item selection event";

INSTANTIATE_TEST_SUITE_P(
    ModifyItem, DefaultAppListModelCalls,
    testing::Values(
        Case("MovesTheSelectionToTheReplacement", "a b*", "ModifyItem b c", "a c*",
             {CLEARED, REPLACED, "view changed [a c*]", MODIFY_SENT, "view selected [a c*]",
              MODIFY_SELECTED}),
        Case("KeepsThePositionOfAnUnselectedItem", "a b*", "ModifyItem a c", "c b*",
             {REPLACED, "view changed [c b*]", MODIFY_SENT}),
        Case("IgnoresAnUnlistedItem", "a*", "ModifyItem b c", "a*", {}),
        Case("DoesNotCheckWhetherTheNewIdIsListed", "a b*", "ModifyItem a b'", "b' b*",
             {REPLACED, "view changed [b b*]", MODIFY_SENT}),
        Case("MayKeepTheId", "a* b", "ModifyItem a a'", "a'* b",
             {CLEARED, REPLACED, "view changed [a* b]", MODIFY_SENT, "view selected [a* b]",
              MODIFY_SELECTED}),
        Case("MovesASelectionThatIsNotListed", "a b", "AddItemAtEnd a'; ModifyItem a c", "c* b",
             {NEW_SELECTED, "view selected [a b] ~a", CLEARED, REPLACED, "view changed [c* b]",
              MODIFY_SENT, "view selected [c* b]", MODIFY_SELECTED}),
        Case("ReportsASelectionThatChangedBeforeAListenerClearedIt", "a* b", "ModifyItem a c",
             "c b",
             {CLEARED, REPLACED, "view changed [c* b]", MODIFY_SENT, "view selected [c b]",
              MODIFY_SELECTED},
             "null")),
    Name);

INSTANTIATE_TEST_SUITE_P(
    SetSelection, DefaultAppListModelCalls,
    testing::Values(
        Case("MovesAndReports", "a* b c", "SetSelection b", "a b* c", {"view selected [a b* c]"}),
        Case("IgnoresAnUnlistedId", "a* b", "SetSelection c", "a* b", {}),
        Case("IsClearedSilentlyByNull", "a b*", "SetSelection null", "a b", {}),
        Case("IsClearedSilentlyByAnEmptyId", "a b*", "SetSelection -", "a b", {}),
        Case("SelectsTheListedObjectAndNotTheArgument", "a* b", "SetSelection b'", "a b*",
             {"view selected [a b*]"}),
        Case("IgnoresTheSelectedId", "a b*", "SetSelection b'", "a b*", {}),
        Case("SelectsTheFirstOfTwoEqualIds", "a* b c", "ModifyItem b c'; SetSelection c", "a c'* c",
             {REPLACED, "view changed [a* c c]", MODIFY_SENT, "view selected [a c* c]"})),
    Name);

INSTANTIATE_TEST_SUITE_P(
    SetClicked, DefaultAppListModelCalls,
    testing::Values(Case("IsLoggedAndReported", "a* b", "SetClicked b", "a* b",
                         {"SetClicked: Menu item clicked: [name: Beta, unique id: b]",
                          "SetClicked: Number of clicked listeners: 1", "view clicked [a* b]"})),
    Name);

INSTANTIATE_TEST_SUITE_P(
    FindNearestItem, DefaultAppListModelCalls,
    testing::Values(
        Case("IsNullInAnEmptyList", "", "FindNearestItem a", "", {NO_NEAREST, "nearest null"}),
        Case("IsNullInAListOfOne", "a*", "FindNearestItem a", "a*", {NO_NEAREST, "nearest null"}),
        Case("IsSilentlyNullForAnUnlistedItem", "a* b", "FindNearestItem c", "a* b",
             {"nearest null"}),
        Case("IsTheNextItem", "a* b c", "FindNearestItem a; FindNearestItem b", "a* b c",
             {NEXT, "nearest b", NEXT, "nearest c"}),
        Case("IsThePreviousItemAtTheEnd", "a* b c", "FindNearestItem c", "a* b c",
             {PREVIOUS, "nearest b"}),
        Case("ComparesIds", "a* b", "FindNearestItem a'", "a* b", {NEXT, "nearest b"})),
    Name);

using DefaultAppListModelLifecycle = ModelFixture;

TEST_F(DefaultAppListModelLifecycle, BeginsWithoutItemsAndWithAnEmptySelection) {
    EXPECT_EQ(model.GetItemsCount(), 0);
    EXPECT_THAT(model.GetAllItems(), IsEmpty());
    ASSERT_NE(model.GetSelection(), nullptr);
    EXPECT_EQ(model.GetSelection()->GetVisibleName(), "");
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
}

TEST_F(DefaultAppListModelLifecycle, ReturnsACopyOfItsList) {
    Fill("a* b");
    Items copy = model.GetAllItems();
    copy.clear();
    EXPECT_EQ(model.GetItemsCount(), 2);
}

TEST_F(DefaultAppListModelLifecycle, DeletesOnlyItsEmptyItemAndSendsNothing) {
    auto* dying = new DefaultAppListModel;
    view.ListenTo(*dying);
    std::map<const void*, std::string> watched{
        {dying->GetSelection(), "empty item"}, {&a, "a"}, {&b, "b"}};
    const DeletionWatch watch([&](const void* block) {
        if (const auto found = watched.find(block); found != watched.end()) {
            Note("deleted " + found->second);
        }
    });
    dying->AddItems({&a});
    dying->ModifyItem(&a, &b);
    dying->RemoveItem(&b);
    dying->AddItems({&a});
    dying->RemoveAllItems();
    dying->AddItems({&a});
    EXPECT_THAT(LogMessages(), testing::Not(testing::Contains(testing::StartsWith("deleted"))));
    ClearLog();
    delete dying;
    EXPECT_EQ(LogText(), "deleted empty item\n");
}

/// The address of the listener's interface as the log shows it.
template <typename Interface>
std::string Address(Interface* listener) {
    return std::to_string(static_cast<int>(reinterpret_cast<std::intptr_t>(listener)));
}

class DefaultAppListModelListeners : public testing::Test {
protected:
    /// Lists a, clears the log and causes an event of each kind.
    void CauseEvents() {
        model.AddItems({&a});
        ClearLog();
        model.RemoveAllItems();
        model.SetClicked(&a);
    }

    static std::string EventsOf(const std::string& one, const std::string& other) {
        return Lines({one + " changed []", other + " changed []", one + " selected []",
                      other + " selected []",
                      "SetClicked: Menu item clicked: [name: Alpha, unique id: a]",
                      "SetClicked: Number of clicked listeners: 2", one + " clicked []",
                      other + " clicked []"});
    }

    static void Remove(DefaultAppListModel& model, RecordingListener& listener) {
        model.RemoveItemSelectionListener(&listener);
        model.RemoveItemChangeListener(&listener);
        model.RemoveItemClickedListener(&listener);
    }

    DefaultAppListItem a{"Alpha", "a"};
    RecordingListener first{"first"};
    RecordingListener second{"second"};
    RecordingListener third{"third"};
    DefaultAppListModel model;
};

TEST_F(DefaultAppListModelListeners, AreLoggedWithTheirAddressesAtEachRegistration) {
    const std::string lines =
        Lines({"AddItemSelectionListener: AddItemSelectionListener, listener address :" +
                   Address<ItemSelectionListener>(&first),
               "AddItemChangeListener: AddItemChangeListener, listener address :" +
                   Address<ItemChangeListener>(&first),
               "AddItemClickedListener: AddItemClickedListener, listener address :" +
                   Address<ItemClickListener>(&first)});
    ClearLog();
    first.ListenTo(model);
    first.ListenTo(model);
    EXPECT_EQ(LogText(), lines + lines);
    EXPECT_EQ(Log()[0].file, "DefaultAppListModel.cpp");
}

TEST_F(DefaultAppListModelListeners, AreNotifiedInTheOrderOfRegistrationChangesFirst) {
    second.ListenTo(model);
    first.ListenTo(model);
    CauseEvents();
    EXPECT_EQ(LogText(), EventsOf("second", "first"));
}

TEST_F(DefaultAppListModelListeners, KeepTheirPositionIfTheyRegisterAgain) {
    first.ListenTo(model);
    second.ListenTo(model);
    first.ListenTo(model);
    CauseEvents();
    EXPECT_EQ(LogText(), EventsOf("first", "second"));
}

TEST_F(DefaultAppListModelListeners, KeepTheirOrderIfAnotherOneIsRemoved) {
    first.ListenTo(model);
    second.ListenTo(model);
    third.ListenTo(model);
    Remove(model, first);
    CauseEvents();
    EXPECT_EQ(LogText(), EventsOf("second", "third"));
}

TEST_F(DefaultAppListModelListeners, StayIfAnUnknownOneIsRemoved) {
    first.ListenTo(model);
    second.ListenTo(model);
    Remove(model, third);
    CauseEvents();
    EXPECT_EQ(LogText(), EventsOf("first", "second"));
}

TEST_F(DefaultAppListModelListeners, AreOptionalAndMayRegisterForOneKind) {
    model.AddItems({&a});
    ClearLog();
    model.ModifyItem(&a, &a);
    EXPECT_EQ(LogText(), Lines({CLEARED, REPLACED, MODIFY_SENT, MODIFY_SELECTED}));
    model.AddItemChangeListener(&first);
    CauseEvents();
    EXPECT_EQ(LogText(), Lines({"first changed []",
                                "SetClicked: Menu item clicked: [name: Alpha, unique id: a]",
                                "SetClicked: Number of clicked listeners: 0"}));
}

}  // namespace
}  // namespace applist::test
