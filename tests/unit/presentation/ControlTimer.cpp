// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/presentation/ControlFixture.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double SECONDS = DefaultAppListControl::AUTO_CLOSE_SECONDS;

class DefaultAppListControlTimer : public ControlTest {};

/// Each event that restarts the timer.
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

TEST_F(DefaultAppListControlTimer, EndsTheApplicationWithoutActivity) {
    TheEcore().Advance(SECONDS - 0.1);
    EXPECT_EQ(TheApp().exits, 0);
    TheEcore().Advance(0.1);
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(Log(), ElementsAre(Debug("Executed timer function"),
                                   Debug("Calling app_efl_exit()"), Event("ui_app_exit")));
    EXPECT_THAT(TheMutexes().calls, ElementsAre("lock", "unlock"));
}

TEST_F(DefaultAppListControlTimer, FiresOnce) {
    TheEcore().Advance(SECONDS);
    EXPECT_FALSE(TheEcore().HasTimer());
    TheEcore().Advance(1000);
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(DefaultAppListControlTimer, LogsASelectionChangeThatRestartsIt) {
    model.Select(&a);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Timer has been reset to its full interval: " + INTERVAL)));
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(timer)"));
}

TEST_F(DefaultAppListControlTimer, IsNotRestartedByASelectionAfterItHasFired) {
    TheEcore().Advance(SECONDS);
    Forget();
    model.Select(&a);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(TheEcore().history, IsEmpty());
}

TEST_F(DefaultAppListControlTimer, IsResetAsNullByAKeyAfterItHasFired) {
    TheEcore().Advance(SECONDS);
    Forget();
    TheEcore().Release("Up");
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_timer_reset(null)"));
}

TEST_F(DefaultAppListControlTimer, IsNotDeletedAfterItHasFired) {
    TheEcore().Advance(SECONDS);
    Forget();
    control.reset();
    EXPECT_THAT(TheEcore().history, ElementsAre("ecore_event_handler_del"));
}

TEST_F(DefaultAppListControlTimer, IsDeletedAfterTheRegistrationAndBeforeKeyHandlerAndMutex) {
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

TEST_F(DefaultAppListControlTimer, ControlWithoutAModelOnlyReleasesItsOwn) {
    control.reset();
    model.history.clear();
    control = std::make_unique<DefaultAppListControl>();
    control.reset();
    EXPECT_THAT(model.history, IsEmpty());
    EXPECT_FALSE(TheEcore().HasTimer());
    EXPECT_FALSE(TheEcore().HasHandler());
}

TEST_F(DefaultAppListControlTimer, IsOptionalAndLoggedWhenItCannotBeCreated) {
    control.reset();
    Forget();
    TheEcore().failTimer = true;
    control = std::make_unique<DefaultAppListControl>();
    control->SetModel(&model);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Creating time this will execute OnTimer() in " + INTERVAL),
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
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Creating time this will execute OnTimer() in " + INTERVAL),
                            Error("Failed to register on key events")));
    TheEcore().Advance(SECONDS);
    EXPECT_EQ(TheApp().exits, 1);
    TheEcore().history.clear();
    control.reset();
    EXPECT_THAT(TheEcore().history, IsEmpty());
}

TEST_P(DefaultAppListControlRestart, GivesTheFullIntervalAgain) {
    TheEcore().Advance(SECONDS - 1);
    Act();
    TheEcore().Advance(SECONDS - 1);
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
