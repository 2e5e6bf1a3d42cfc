// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/presentation/ControlFixture.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string RESET_LOG = "Timer has been reset to its full interval: " + INTERVAL;
const std::string KEY_RESET_LOG = "Resetting timer to its full interval: " + INTERVAL;

std::string ValuesLog(const std::string& key) {
    return "Event values: keyname=" + key + ", key=" + key;
}

class DefaultAppListControlKeys : public ControlTest {
protected:
    void SelectOnly(AppListItem* item) {
        model.items = {item};
        model.selection = item;
    }
};

TEST_F(DefaultAppListControlKeys, BackClosesTheApplicationAndStopsTheEvent) {
    EXPECT_EQ(TheEcore().Release("XF86Back"), ECORE_CALLBACK_DONE);
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(TheEcore().history, IsEmpty());
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("XF86Back")),
                    Debug("Return key has been hit. Closing application"), Event("ui_app_exit")));
}

TEST_F(DefaultAppListControlKeys, ExitClosesTheApplicationAndStopsTheEvent) {
    EXPECT_EQ(TheEcore().Release("XF86Exit"), ECORE_CALLBACK_DONE);
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(TheEcore().history, IsEmpty());
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("XF86Exit")),
                    Debug("Exit key has been hit. Closing application"), Event("ui_app_exit")));
}

TEST_F(DefaultAppListControlKeys, UpOnlyRestartsTheTimer) {
    EXPECT_EQ(TheEcore().Release("Up"), ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(timer)"));
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Up")),
                                   Debug("Up key has been hit. Resetting timer to its full "
                                         "interval: " +
                                         INTERVAL)));
}

TEST_F(DefaultAppListControlKeys, DownOnlyRestartsTheTimer) {
    EXPECT_EQ(TheEcore().Release("Down"), ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(timer)"));
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Down")),
                                   Debug("Down key has been hit. Resetting timer to its full "
                                         "interval: " +
                                         INTERVAL)));
}

TEST_F(DefaultAppListControlKeys, RightSelectsTheNextItemAndRestartsTheTimerTwice) {
    EXPECT_EQ(TheEcore().Release("Right"), ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(c)"));
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(timer)", "ecore_timer_reset(timer)"));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Right")),
                            Debug("Right key has been hit. Scroll focus down."),
                            Debug("Found focused item."), Debug(RESET_LOG), Debug(KEY_RESET_LOG)));
}

TEST_F(DefaultAppListControlKeys, LeftSelectsThePreviousItemAndRestartsTheTimerTwice) {
    EXPECT_EQ(TheEcore().Release("Left"), ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(a)"));
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(timer)", "ecore_timer_reset(timer)"));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Left")),
                            Debug("Left key has been hit. Scroll focus top."),
                            Debug("Found focused item."), Debug(RESET_LOG), Debug(KEY_RESET_LOG)));
}

TEST_F(DefaultAppListControlKeys, RightOnTheLastItemSelectsTheFirst) {
    model.selection = &c;
    TheEcore().Release("Right");
    EXPECT_EQ(model.selection, &a);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Right")),
                            Debug("Right key has been hit. Scroll focus down."),
                            Debug("Found focused item."), Debug("Scrolling item over to top."),
                            Debug(RESET_LOG), Debug(KEY_RESET_LOG)));
}

TEST_F(DefaultAppListControlKeys, LeftOnTheFirstItemSelectsTheLast) {
    model.selection = &a;
    TheEcore().Release("Left");
    EXPECT_EQ(model.selection, &c);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed key event function"), Debug(ValuesLog("Left")),
                            Debug("Left key has been hit. Scroll focus top."),
                            Debug("Found focused item."), Debug("Scrolling item over to bottom."),
                            Debug(RESET_LOG), Debug(KEY_RESET_LOG)));
}

TEST_F(DefaultAppListControlKeys, BothSelectTheOnlyItemAgain) {
    SelectOnly(&a);
    TheEcore().Release("Right");
    TheEcore().Release("Left");
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(a)",
                                           "GetAllItems", "GetSelection", "SetSelection(a)"));
}

TEST_F(DefaultAppListControlKeys, OnlyRestartTheTimerWhenNothingIsSelected) {
    DefaultAppListItem nothing;
    model.selection = &nothing;
    TheEcore().Release("Right");
    TheEcore().Release("Left");
    EXPECT_EQ(model.selection, &nothing);
    EXPECT_THAT(model.history,
                ElementsAre("GetAllItems", "GetSelection", "GetAllItems", "GetSelection"));
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(timer)", "ecore_timer_reset(timer)"));
    EXPECT_THAT(LogMessages(),
                ElementsAre("Executed key event function", ValuesLog("Right"),
                            "Right key has been hit. Scroll focus down.", KEY_RESET_LOG,
                            "Executed key event function", ValuesLog("Left"),
                            "Left key has been hit. Scroll focus top.", KEY_RESET_LOG));
}

TEST_F(DefaultAppListControlKeys, DoNotTakeAnotherObjectWithTheSameIdForTheSelectedOne) {
    DefaultAppListItem twin("Beta", "b");
    model.selection = &twin;
    TheEcore().Release("Right");
    EXPECT_EQ(model.selection, &twin);
}

TEST_F(DefaultAppListControlKeys, RestartTheTimerBeforeThereIsAModel) {
    control.reset();
    control = std::make_unique<DefaultAppListControl>();
    Forget();
    TheEcore().Release("Right");
    TheEcore().Release("Left");
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(timer)", "ecore_timer_reset(timer)"));
}

TEST_F(DefaultAppListControlKeys, PassUnknownKeysWithoutRestartingTheTimer) {
    EXPECT_EQ(TheEcore().Release("Return"), ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(TheEcore().Release("up"), ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(TheEcore().history, IsEmpty());
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(LogMessages(), ElementsAre("Executed key event function", ValuesLog("Return"),
                                           "Executed key event function", ValuesLog("up")));
}

TEST_F(DefaultAppListControlKeys, AreJudgedByTheirKeyNotByTheirKeyname) {
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_UP, "XF86Back", "b"), ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("Executed key event function"),
                                   Debug("Event values: keyname=XF86Back, key=b")));
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_UP, "b", "XF86Back"), ECORE_CALLBACK_DONE);
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(DefaultAppListControlKeys, ActWhenReleasedNotWhenPressed) {
    EXPECT_EQ(TheEcore().Send(ECORE_EVENT_KEY_DOWN, "XF86Back", "XF86Back"),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), IsEmpty());
    TheEcore().Release("XF86Back");
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(DefaultAppListControlKeys, OfAnotherEventTypePassSilently) {
    Ecore_Event_Key event{};
    event.key = "XF86Back";
    event.keyname = "XF86Back";
    EXPECT_EQ(DefaultAppListControl::OnKey(control.get(), ECORE_EVENT_KEY_DOWN, &event),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("Executed key event function")));
}

TEST_F(DefaultAppListControlKeys, WithoutEventOrControlAreLoggedAndPassOn) {
    Ecore_Event_Key event{};
    EXPECT_EQ(DefaultAppListControl::OnKey(nullptr, ECORE_EVENT_KEY_UP, &event),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_EQ(DefaultAppListControl::OnKey(control.get(), ECORE_EVENT_KEY_UP, nullptr),
              ECORE_CALLBACK_PASS_ON);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed key event function"), Error("Event or data is NULL"),
                            Debug("Executed key event function"), Error("Event or data is NULL")));
}

}  // namespace
}  // namespace applist::test
