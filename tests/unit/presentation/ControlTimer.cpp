// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/presentation/ControlFixture.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DefaultAppListControlTimer : public ControlTest {};

/// Each of what restarts the timer.
class DefaultAppListControlRestart : public ControlTest,
                                     public testing::WithParamInterface<const char*> {
protected:
    void Act() {
        if (GetParam() == std::string("a selection")) {
            model.Select(&a);
        } else {
            TheEcore().Release(GetParam());
        }
    }
};

TEST_F(DefaultAppListControlTimer, RunsFromConstructionAndListensToKeyReleases) {
    control.reset();
    Forget();
    control = std::make_unique<DefaultAppListControl>();
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_add(65)", "ecore_event_handler_add(key up)"));
    EXPECT_THAT(Log(), ElementsAre(Debug("Creating time this will execute OnTimer() in 65s")));
}

TEST_F(DefaultAppListControlTimer, EndsTheApplicationAfter65SecondsWithoutActivity) {
    TheEcore().Advance(64.9);
    EXPECT_EQ(TheApp().exits, 0);
    TheEcore().Advance(0.1);
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Executed timer function"), Debug("Calling app_efl_exit()")));
}

TEST_F(DefaultAppListControlTimer, FiresOnce) {
    TheEcore().Advance(65);
    EXPECT_FALSE(TheEcore().HasTimer());
    TheEcore().Advance(1000);
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(DefaultAppListControlTimer, LogsASelectionChangeThatRestartsIt) {
    model.Select(&a);
    EXPECT_THAT(Log(), ElementsAre(Debug("Timer has been reset to its full interval: 65s")));
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(timer)"));
}

TEST_F(DefaultAppListControlTimer, IsLeftAloneByASelectionOnceItHasFired) {
    TheEcore().Advance(65);
    Forget();
    model.Select(&a);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(TheEcore().history, IsEmpty());
}

TEST_F(DefaultAppListControlTimer, IsResetAsNullByAKeyOnceItHasFired) {
    TheEcore().Advance(65);
    Forget();
    TheEcore().Release("Up");
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(null)"));
}

TEST_F(DefaultAppListControlTimer, IsNotDeletedOnceItHasFired) {
    TheEcore().Advance(65);
    Forget();
    control.reset();
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_event_handler_del"));
}

TEST_F(DefaultAppListControlTimer, GoesWithTheControlBeforeTheKeyHandlerAndAfterTheModel) {
    control.reset();
    EXPECT_THAT(model.history, ElementsAre("RemoveItemSelectionListener"));
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_del", "ecore_event_handler_del"));
    EXPECT_THAT(model.selectionListeners, IsEmpty());
}

TEST_F(DefaultAppListControlTimer, ControlWithoutAModelOnlyReleasesItsOwn) {
    control.reset();
    model.history.clear();
    control = std::make_unique<DefaultAppListControl>();
    control.reset();
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_FALSE(TheEcore().HasTimer());
    EXPECT_FALSE(TheEcore().HasHandler());
}

TEST_F(DefaultAppListControlTimer, ThatCannotBeCreatedIsLoggedAndDoneWithout) {
    control.reset();
    Forget();
    TheEcore().failTimer = true;
    control = std::make_unique<DefaultAppListControl>();
    control->SetModel(&model);
    EXPECT_THAT(Log(), ElementsAre(Debug("Creating time this will execute OnTimer() in 65s"),
                                   Error("Failed to create timer")));
    Forget();
    model.Select(&a);
    TheEcore().Release("Down");
    control.reset();
    EXPECT_THAT(TheEcore().history,
                ElementsAre("ecore_timer_reset(null)", "ecore_event_handler_del"));
}

TEST_F(DefaultAppListControlTimer, SurvivesAKeyHandlerThatCannotBeRegistered) {
    control.reset();
    Forget();
    TheEcore().failHandler = true;
    control = std::make_unique<DefaultAppListControl>();
    EXPECT_THAT(Log(), ElementsAre(Debug("Creating time this will execute OnTimer() in 65s"),
                                   Error("Failed to register on key events")));
    TheEcore().Advance(65);
    EXPECT_EQ(TheApp().exits, 1);
    TheEcore().history.clear();
    control.reset();
    EXPECT_THAT(TheEcore().history, IsEmpty());
}

TEST_P(DefaultAppListControlRestart, GivesTheFull65SecondsAgain) {
    TheEcore().Advance(64);
    Act();
    TheEcore().Advance(64);
    EXPECT_EQ(TheApp().exits, 0);
    TheEcore().Advance(1);
    EXPECT_EQ(TheApp().exits, 1);
}

INSTANTIATE_TEST_SUITE_P(Activities, DefaultAppListControlRestart,
                         testing::Values("Up", "Down", "Right", "Left", "a selection"),
                         [](const auto& test) {
                             const std::string name = test.param;
                             return name == "a selection" ? "Selection" : name;
                         });

}  // namespace
}  // namespace applist::test
