// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Ecore.h>
#include <Ecore_Input.h>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "VirtualEcore.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListItem.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeListModel.h"
#include "fakes/FakeMutex.h"
#include "fakes/FakePlatformLog.h"

using applist::headless::TheEcore;
using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

constexpr double SECONDS = DefaultAppListControl::AUTO_CLOSE_SECONDS;
constexpr const char* RESET = "ecore_timer_reset(timer)";
const std::string SELECTED = "ItemSelected: Timer has been reset to its full interval: 65s";
const std::string CREATED =
    "DefaultAppListControl: Creating time this will execute OnTimer() in 65s";

/// A control connected to a model of the items a, b and c, with b selected. Each test also checks
/// that the control holds its mutex whenever it uses the timer.
class DefaultAppListControlTest : public testing::Test {
protected:
    DefaultAppListControlTest() {
        TheApp() = {};
        TheEcore() = {};
        TheMutexes() = {};
        TheEcore().onCall = [](const std::string& call) {
            if (call.starts_with("ecore_timer")) {
                EXPECT_EQ(TheMutexes().held, 1) << call;
            }
        };
        model.items = {&a, &b, &c};
        model.selection = &b;
        control = std::make_unique<DefaultAppListControl>();
        control->SetModel(&model);
        Forget();
    }

    void Forget() {
        ClearLog();
        TheEcore().history.clear();
        TheMutexes().calls.clear();
        model.history.clear();
    }

    /// Replaces the control by one without a model.
    void CreateAnew() {
        control.reset();
        Forget();
        control = std::make_unique<DefaultAppListControl>();
    }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    FakeListModel model;
    std::unique_ptr<DefaultAppListControl> control;
};

/// A key, the item that is selected before and after it, and what it does.
struct Key {
    const char* name;
    const char* key;
    size_t before;
    size_t after;
    std::vector<const char*> timerCalls;
    std::vector<std::string> log;
};

// A call is formatted more densely than a list in braces.
Key Case(const char* name, const char* key, size_t before, size_t after,
         std::vector<const char*> timerCalls, std::vector<std::string> log) {
    return {name, key, before, after, std::move(timerCalls), std::move(log)};
}

void PrintTo(const Key& row, std::ostream* out) {
    *out << row.key;
}

class AKey : public DefaultAppListControlTest, public testing::WithParamInterface<Key> {};

TEST_P(AKey, ClosesTheListOrMovesTheSelectionAndRestartsTheTimer) {
    const Key& row = GetParam();
    const bool closes = !row.log.empty() && row.log.back() == "ui_app_exit";
    model.selection = model.items[row.before];
    EXPECT_EQ(TheEcore().Release(row.key), closes ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(model.selection, model.items[row.after]);
    EXPECT_THAT(TheEcore().history, testing::ElementsAreArray(row.timerCalls));
    EXPECT_EQ(TheApp().exits, closes ? 1 : 0);
    EXPECT_EQ(LogText(),
              Lines({"OnKey: Executed key event function",
                     std::string("OnKey: Event values: keyname=") + row.key + ", key=" + row.key}) +
                  Lines(row.log));
}

const std::string RIGHT = "HandleRight: Right key has been hit. Scroll focus down.";
const std::string LEFT = "HandleLeft: Left key has been hit. Scroll focus top.";
const std::string KEY_RESET = "Resetting timer to its full interval: 65s";

INSTANTIATE_TEST_SUITE_P(
    OfTheRemoteControl, AKey,
    testing::Values(
        Case("BackCloses", "XF86Back", 1, 1, {},
             {"HandleBack: Return key has been hit. Closing application", "ui_app_exit"}),
        Case("ExitCloses", "XF86Exit", 1, 1, {},
             {"HandleExit: Exit key has been hit. Closing application", "ui_app_exit"}),
        Case("UpRestartsTheTimer", "Up", 1, 1, {RESET},
             {"HandleUp: Up key has been hit. Resetting timer to its full interval: 65s"}),
        Case("DownRestartsTheTimer", "Down", 1, 1, {RESET},
             {"HandleDown: Down key has been hit. Resetting timer to its full interval: 65s"}),
        Case("RightMovesDown", "Right", 1, 2, {RESET, RESET},
             {RIGHT, "StepForward: Found focused item.", SELECTED, "HandleRight: " + KEY_RESET}),
        Case("RightMovesFromTheLastItemToTheFirst", "Right", 2, 0, {RESET, RESET},
             {RIGHT, "StepForward: Found focused item.", "StepForward: Scrolling item over to top.",
              SELECTED, "HandleRight: " + KEY_RESET}),
        Case("LeftMovesUp", "Left", 1, 0, {RESET, RESET},
             {LEFT, "StepBack: Found focused item.", SELECTED, "HandleLeft: " + KEY_RESET}),
        Case("LeftMovesFromTheFirstItemToTheLast", "Left", 0, 2, {RESET, RESET},
             {LEFT, "StepBack: Found focused item.", "StepBack: Scrolling item over to bottom.",
              SELECTED, "HandleLeft: " + KEY_RESET}),
        Case("ReturnIsIgnored", "Return", 1, 1, {}, {}),
        Case("NamesAreCaseSensitive", "up", 1, 1, {}, {})),
    [](const auto& row) { return row.param.name; });

using Keys = DefaultAppListControlTest;

TEST_F(Keys, SetTheSelectionThatTheyFindInTheModel) {
    TheEcore().Release("Right");
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(c)"));
    Forget();
    TheEcore().Release("Up");
    TheEcore().Release("Return");
    EXPECT_THAT(model.history, IsEmpty());
}

TEST_F(Keys, SelectTheOnlyItemAgain) {
    model.items = {&a};
    model.selection = &a;
    TheEcore().Release("Right");
    TheEcore().Release("Left");
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(a)",
                                           "GetAllItems", "GetSelection", "SetSelection(a)"));
}

TEST_F(Keys, OnlyRestartTheTimerIfNoListedObjectIsSelected) {
    DefaultAppListItem empty;
    DefaultAppListItem sameId("Beta", "b");
    for (AppListItem* selection : {&empty, &sameId}) {
        Forget();
        model.selection = selection;
        TheEcore().Release("Right");
        TheEcore().Release("Left");
        EXPECT_EQ(model.selection, selection);
        EXPECT_THAT(model.history,
                    ElementsAre("GetAllItems", "GetSelection", "GetAllItems", "GetSelection"));
        EXPECT_THAT(TheEcore().history, ElementsAre(RESET, RESET));
        EXPECT_EQ(LogText(),
                  Lines({"OnKey: Executed key event function",
                         "OnKey: Event values: keyname=Right, key=Right", RIGHT,
                         "HandleRight: " + KEY_RESET, "OnKey: Executed key event function",
                         "OnKey: Event values: keyname=Left, key=Left", LEFT,
                         "HandleLeft: " + KEY_RESET}));
    }
}

TEST_F(Keys, RestartTheTimerBeforeTheControlHasAModel) {
    CreateAnew();
    TheEcore().history.clear();
    TheEcore().Release("Right");
    TheEcore().Release("Left");
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_THAT(TheEcore().history, ElementsAre(RESET, RESET));
}

TEST_F(Keys, AreIdentifiedByTheirKeyNotByTheirKeyname) {
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_UP, "XF86Back", "b"), ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_EQ(Log().back(), Debug("Event values: keyname=XF86Back, key=b"));
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_UP, "b", "XF86Back"), ECORE_CALLBACK_DONE);
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(Keys, HaveNoEffectWhenPressedOrInAnotherEvent) {
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_DOWN, "XF86Back", "XF86Back"),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(LogText(), "");
    Ecore_Event_Key event{};
    event.key = "XF86Back";
    event.keyname = "XF86Back";
    EXPECT_EQ(DefaultAppListControl::OnKey(control.get(), ECORE_EVENT_KEY_DOWN, &event),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(LogText(), "OnKey: Executed key event function\n");
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(Keys, WithoutEventOrControlAreLogged) {
    Ecore_Event_Key event{};
    for (const auto& [data, keyEvent] :
         {std::pair<void*, void*>{nullptr, &event}, {control.get(), nullptr}}) {
        ClearLog();
        EXPECT_EQ(DefaultAppListControl::OnKey(data, ECORE_EVENT_KEY_UP, keyEvent),
                  ECORE_CALLBACK_PASS_ON);
        EXPECT_EQ(LogText(), Lines({"OnKey: Executed key event function",
                                    "ERROR OnKey: Event or data is NULL"}));
    }
}

using Timer = DefaultAppListControlTest;

TEST_F(Timer, RunsFromConstructionOn) {
    CreateAnew();
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_add(65)", "ecore_event_handler_add(key up)"));
    EXPECT_EQ(LogText(), Lines({CREATED}));
}

TEST_F(Timer, EndsTheApplicationOnceWithoutActivity) {
    TheEcore().Advance(SECONDS - 0.1);
    EXPECT_EQ(TheApp().exits, 0);
    TheEcore().Advance(0.1);
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_EQ(LogText(), Lines({"OnTimer: Executed timer function",
                                "OnTimer: Calling app_efl_exit()", "ui_app_exit"}));
    EXPECT_THAT(TheMutexes().calls, ElementsAre("lock", "unlock"));
    EXPECT_FALSE(TheEcore().HasTimer());
    TheEcore().Advance(1000);
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(Timer, IsRestartedByASelection) {
    model.Select(&a);
    EXPECT_EQ(LogText(), Lines({SELECTED}));
    EXPECT_THAT(TheEcore().history, ElementsAre(RESET));
}

TEST_F(Timer, IsNeitherRestartedByASelectionNorDeletedAfterItHasFired) {
    TheEcore().Advance(SECONDS);
    Forget();
    model.Select(&a);
    EXPECT_EQ(LogText(), "");
    EXPECT_THAT(TheEcore().history, IsEmpty());
    TheEcore().Release("Up");
    control.reset();
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(null)", "ecore_event_handler_del"));
}

TEST_F(Timer, IsDeletedAfterTheRegistrationAndBeforeKeyHandlerAndMutex) {
    model.onCall = [](const std::string& call) { TheEcore().history.push_back(call); };
    TheEcore().onCall = [](const std::string& call) {
        EXPECT_EQ(TheMutexes().held, call == "ecore_timer_del" ? 1 : 0) << call;
        EXPECT_EQ(TheMutexes().alive.size(), 1U) << call;
    };
    control.reset();
    EXPECT_THAT(TheEcore().history, ElementsAre("RemoveItemSelectionListener", "ecore_timer_del",
                                                "ecore_event_handler_del"));
    EXPECT_THAT(model.selectionListeners, IsEmpty());
    EXPECT_THAT(TheMutexes().calls, ElementsAre("lock", "unlock", "destroy"));
}

TEST_F(Timer, AndKeyHandlerAreReleasedByAControlWithoutAModel) {
    CreateAnew();
    control.reset();
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_FALSE(TheEcore().HasTimer());
    EXPECT_FALSE(TheEcore().HasHandler());
}

TEST_F(Timer, IsOptionalAndLoggedIfItCannotBeCreated) {
    TheEcore().failTimer = true;
    CreateAnew();
    control->SetModel(&model);
    EXPECT_EQ(LogText(), Lines({CREATED, "ERROR DefaultAppListControl: Failed to create timer"}));
    Forget();
    model.Select(&a);
    TheEcore().Release("Down");
    control.reset();
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(null)", "ecore_event_handler_del"));
}

TEST_F(Timer, RunsEvenIfTheKeyHandlerCannotBeRegistered) {
    TheEcore().failHandler = true;
    CreateAnew();
    EXPECT_EQ(LogText(),
              Lines({CREATED, "ERROR DefaultAppListControl: Failed to register on key events"}));
    TheEcore().Advance(SECONDS);
    EXPECT_EQ(TheApp().exits, 1);
    TheEcore().history.clear();
    control.reset();
    EXPECT_THAT(TheEcore().history, IsEmpty());
}

TEST_F(Timer, GivesTheFullIntervalAgainAfterEachActivity) {
    for (const std::string activity : {"Up", "Down", "Right", "Left", "a selection"}) {
        TheEcore().Advance(SECONDS - 1);
        if (activity == "a selection") {
            model.Select(&a);
        } else {
            TheEcore().Release(activity.c_str());
        }
        EXPECT_EQ(TheApp().exits, 0) << activity;
    }
    TheEcore().Advance(SECONDS - 1);
    EXPECT_EQ(TheApp().exits, 0);
    TheEcore().Advance(1);
    EXPECT_EQ(TheApp().exits, 1);
}

}  // namespace
}  // namespace applist::test
