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

TEST_F(DefaultAppListControlKeys, CloseTheListOrMoveTheSelectionAndRestartTheTimer) {
    const LogLine found = Debug("Found focused item.");
    const LogLine reset = Debug(RESET_LOG);
    const LogLine keyReset = Debug(KEY_RESET_LOG);
    const LogLine right = Debug("Right key has been hit. Scroll focus down.");
    const LogLine left = Debug("Left key has been hit. Scroll focus top.");
    const struct {
        const char* key;
        AppListItem* selection;
        AppListItem* selectionAfter;
        Eina_Bool result;
        size_t resets;
        std::vector<LogLine> log;
    } rows[] = {
        {"XF86Back",
         &b,
         &b,
         ECORE_CALLBACK_DONE,
         0,
         {Debug("Return key has been hit. Closing application"), Event("ui_app_exit")}},
        {"XF86Exit",
         &b,
         &b,
         ECORE_CALLBACK_DONE,
         0,
         {Debug("Exit key has been hit. Closing application"), Event("ui_app_exit")}},
        {"Up",
         &b,
         &b,
         ECORE_CALLBACK_PASS_ON,
         1,
         {Debug("Up key has been hit. Resetting timer to its full interval: " + INTERVAL)}},
        {"Down",
         &b,
         &b,
         ECORE_CALLBACK_PASS_ON,
         1,
         {Debug("Down key has been hit. Resetting timer to its full interval: " + INTERVAL)}},
        {"Right", &b, &c, ECORE_CALLBACK_PASS_ON, 2, {right, found, reset, keyReset}},
        {"Right",
         &c,
         &a,
         ECORE_CALLBACK_PASS_ON,
         2,
         {right, found, Debug("Scrolling item over to top."), reset, keyReset}},
        {"Left", &b, &a, ECORE_CALLBACK_PASS_ON, 2, {left, found, reset, keyReset}},
        {"Left",
         &a,
         &c,
         ECORE_CALLBACK_PASS_ON,
         2,
         {left, found, Debug("Scrolling item over to bottom."), reset, keyReset}},
    };
    int exits = 0;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.key);
        Forget();
        model.selection = row.selection;
        EXPECT_EQ(TheEcore().Release(row.key), row.result);
        EXPECT_EQ(model.selection, row.selectionAfter);
        EXPECT_EQ(TheEcore().history,
                  std::vector<std::string>(row.resets, "ecore_timer_reset(timer)"));
        std::vector<LogLine> log{Debug("Executed key event function"), Debug(ValuesLog(row.key))};
        log.insert(log.end(), row.log.begin(), row.log.end());
        EXPECT_EQ(Log(), log);
        exits += row.result == ECORE_CALLBACK_DONE ? 1 : 0;
        EXPECT_EQ(TheApp().exits, exits);
    }
}

TEST_F(DefaultAppListControlKeys, SetTheSelectionThatTheyFindInTheModel) {
    TheEcore().Release("Right");
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection", "SetSelection(c)"));
    Forget();
    TheEcore().Release("Up");
    EXPECT_THAT(model.history, IsEmpty());
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
