// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AppListEntry.h"
#include "fakes/FakeApp.h"
#include "fakes/FakePlatformLog.h"
#include "unit/start/FakeGraph.h"

namespace applist::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnAppListEntry : public testing::Test {
protected:
    AnAppListEntry() {
        TheApp() = FakeApp{};
        Graph() = GraphJournal{};
        ClearLog();
        m_entry.emplace("org.vantu.applist");
    }

    void Launch() { AppListEntry::Service(nullptr, &*m_entry); }

    // Without what the channel inside the local model writes.
    static std::vector<LogLine> EntryLog() {
        std::vector<LogLine> lines;
        std::copy_if(Log().begin(), Log().end(), std::back_inserter(lines),
                     [](const LogLine& line) { return line.file == "AppListEntry.cpp"; });
        return lines;
    }

    std::optional<AppListEntry> m_entry;
};

TEST_F(AnAppListEntry, BuildsNothingBeforeCreate) {
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(AnAppListEntry, BuildsTheGraphInOrderAndConnectsRendererBeforeControl) {
    EXPECT_TRUE(AppListEntry::Create(&*m_entry));
    EXPECT_THAT(Graph().events,
                ElementsAre("new default model", "new local model", "new renderer", "new control",
                            "renderer SetModel", "control SetModel"));
    EXPECT_THAT(EntryLog(), ElementsAre(Debug("_create callback function calling")));
}

TEST_F(AnAppListEntry, ShowsTheListOnlyTheLocalModel) {
    AppListEntry::Create(&*m_entry);
    EXPECT_EQ(Graph().localModelGot, Graph().defaultModel);
    EXPECT_EQ(Graph().rendererModel, Graph().localModel);
    EXPECT_EQ(Graph().controlModel, Graph().localModel);
    EXPECT_EQ(Graph().rendererGot, "org.vantu.applist");
}

TEST_F(AnAppListEntry, RefusesToStartWithoutUserData) {
    EXPECT_FALSE(AppListEntry::Create(nullptr));
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("_create callback function calling"),
                                   Error("service data is null")));
}

TEST_F(AnAppListEntry, OnlyTakesNoteOfTheFirstLaunch) {
    AppListEntry::Create(&*m_entry);
    ClearLog();
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("_service callback function calling"),
                                   Debug("_handle_service function calling"),
                                   Debug("_handle_cmd function calling")));
}

TEST_F(AnAppListEntry, ClosesOnTheSecondLaunch) {
    AppListEntry::Create(&*m_entry);
    Launch();
    ClearLog();
    Launch();
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(Log(), ElementsAre(Debug("_service callback function calling"),
                                   Debug("_handle_service function calling"),
                                   Debug("_handle_cmd function calling"),
                                   Debug("Closing application by calling app_efl_exit()")));
}

TEST_F(AnAppListEntry, AsksToExitAgainOnEachFurtherLaunch) {
    AppListEntry::Create(&*m_entry);
    Launch();
    Launch();
    Launch();
    EXPECT_EQ(TheApp().exits, 2);
}

TEST_F(AnAppListEntry, CountsLaunchesFromCreateOn) {
    Launch();
    AppListEntry::Create(&*m_entry);
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(AnAppListEntry, ForgetsItsLaunchesOnTerminate) {
    AppListEntry::Create(&*m_entry);
    Launch();
    AppListEntry::Terminate(&*m_entry);
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(AnAppListEntry, IgnoresALaunchWithoutUserData) {
    AppListEntry::Service(nullptr, nullptr);
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("_service callback function calling"),
                                   Error("service data is null")));
}

TEST_F(AnAppListEntry, ChangesNothingOnPauseAndResume) {
    AppListEntry::Create(&*m_entry);
    const std::vector<std::string> built = Graph().events;
    ClearLog();
    AppListEntry::Pause(&*m_entry);
    AppListEntry::Resume(&*m_entry);
    AppListEntry::Pause(nullptr);
    AppListEntry::Resume(nullptr);
    EXPECT_EQ(Graph().events, built);
    EXPECT_THAT(Log(), ElementsAre(Debug("_pause callback function calling"),
                                   Debug("_resume callback function calling"),
                                   Debug("_pause callback function calling"),
                                   Debug("_resume callback function calling")));
}

TEST_F(AnAppListEntry, DeletesListThenViewsThenModelsOnTerminate) {
    AppListEntry::Create(&*m_entry);
    Graph().events.clear();
    ClearLog();
    {
        const WatchListMemory watch;
        AppListEntry::Terminate(&*m_entry);
    }
    EXPECT_THAT(Graph().events, ElementsAre("delete list", "delete renderer", "delete control",
                                            "delete local model", "delete default model"));
    EXPECT_THAT(EntryLog(),
                ElementsAre(Debug("_terminate callback function calling"), Debug("Delete")));
}

TEST_F(AnAppListEntry, DeletesEachObjectOnceWhenTerminatedAndThenDestroyed) {
    AppListEntry::Create(&*m_entry);
    AppListEntry::Terminate(&*m_entry);
    Graph().events.clear();
    ClearLog();
    {
        const WatchListMemory watch;
        m_entry.reset();
    }
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("Delete")));
}

TEST_F(AnAppListEntry, DeletesWhatIsLeftWhenDestroyedWithoutTerminate) {
    AppListEntry::Create(&*m_entry);
    Graph().events.clear();
    m_entry.reset();
    EXPECT_THAT(Graph().events, ElementsAre("delete renderer", "delete control",
                                            "delete local model", "delete default model"));
}

TEST_F(AnAppListEntry, NamesItsFunctionsInItsLines) {
    AppListEntry::Create(nullptr);
    AppListEntry::Service(nullptr, nullptr);
    Launch();
    Launch();
    AppListEntry::Pause(nullptr);
    AppListEntry::Resume(nullptr);
    AppListEntry::Terminate(&*m_entry);
    EXPECT_THAT(LogFunctions(),
                ElementsAre("Create", "Create", "Service", "Service", "Service", "HandleService",
                            "HandleCmd", "Service", "HandleService", "HandleCmd", "HandleCmd",
                            "Pause", "Resume", "Terminate", "Delete"));
}

TEST_F(AnAppListEntry, TerminatesWithoutUserData) {
    AppListEntry::Terminate(nullptr);
    EXPECT_THAT(Log(), ElementsAre(Debug("_terminate callback function calling")));
}

}  // namespace
}  // namespace applist::test
