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
#include "support/AllocationWatch.h"
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

    // The log without the lines of the channel inside the local model.
    static std::vector<LogLine> EntryLog() {
        std::vector<LogLine> lines;
        std::copy_if(Log().begin(), Log().end(), std::back_inserter(lines),
                     [](const LogLine& line) { return line.file == "AppListEntry.cpp"; });
        return lines;
    }

    std::optional<AppListEntry> m_entry;
    const DeletionWatch m_listWatch{[](const void* block) {
        if (block == Graph().list) {
            Graph().list = nullptr;
            Graph().events.emplace_back("delete list");
        }
    }};
};

TEST_F(AnAppListEntry, BuildsNothingBeforeCreate) {
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(AnAppListEntry, BuildsTheGraphInOrder) {
    EXPECT_TRUE(AppListEntry::Create(&*m_entry));
    EXPECT_THAT(Graph().events, ElementsAre("new default model", "new local model", "new renderer",
                                            "new control", "new list"));
    EXPECT_THAT(EntryLog(), ElementsAre(Debug("_create callback function calling", "Create")));
}

TEST_F(AnAppListEntry, GivesTheListTheLocalModelAndTheViews) {
    AppListEntry::Create(&*m_entry);
    EXPECT_EQ(Graph().localModelGot, Graph().defaultModel);
    EXPECT_EQ(Graph().listModel, Graph().localModel);
    EXPECT_EQ(Graph().listRenderer, Graph().renderer);
    EXPECT_EQ(Graph().listControl, Graph().control);
    EXPECT_EQ(Graph().rendererGot, "org.vantu.applist");
}

TEST_F(AnAppListEntry, RefusesToStartWithoutUserData) {
    EXPECT_FALSE(AppListEntry::Create(nullptr));
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("_create callback function calling", "Create"),
                                   Error("service data is null", "Create")));
}

// The views use the toolkit, which is shut down before the entry is destroyed.
TEST_F(AnAppListEntry, DeletesAtOnceWhatAFailedCreateHasBuilt) {
    Graph().controlThrows = true;
    EXPECT_FALSE(AppListEntry::Create(&*m_entry));
    EXPECT_THAT(Graph().events,
                ElementsAre("new default model", "new local model", "new renderer",
                            "delete renderer", "delete local model", "delete default model"));
    EXPECT_THAT(Log(), testing::Contains(Error("Callback aborted: std::bad_alloc")));
}

TEST_F(AnAppListEntry, OnlyTakesNoteOfTheFirstLaunch) {
    AppListEntry::Create(&*m_entry);
    ClearLog();
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
    EXPECT_THAT(Log(), ElementsAre(Debug("_service callback function calling", "Service"),
                                   Debug("_handle_service function calling", "HandleService"),
                                   Debug("_handle_cmd function calling", "HandleCmd")));
}

TEST_F(AnAppListEntry, ClosesOnTheSecondLaunch) {
    AppListEntry::Create(&*m_entry);
    Launch();
    ClearLog();
    Launch();
    EXPECT_EQ(TheApp().exits, 1);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("_service callback function calling", "Service"),
                            Debug("_handle_service function calling", "HandleService"),
                            Debug("_handle_cmd function calling", "HandleCmd"),
                            Debug("Closing application by calling app_efl_exit()", "HandleCmd"),
                            Event("ui_app_exit")));
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
    EXPECT_THAT(Log(), ElementsAre(Debug("_service callback function calling", "Service"),
                                   Error("service data is null", "Service")));
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
    EXPECT_THAT(Log(), ElementsAre(Debug("_pause callback function calling", "Pause"),
                                   Debug("_resume callback function calling", "Resume"),
                                   Debug("_pause callback function calling", "Pause"),
                                   Debug("_resume callback function calling", "Resume")));
}

TEST_F(AnAppListEntry, DeletesListThenViewsThenModelsOnTerminate) {
    AppListEntry::Create(&*m_entry);
    Graph().events.clear();
    ClearLog();
    AppListEntry::Terminate(&*m_entry);
    EXPECT_THAT(Graph().events, ElementsAre("delete list", "delete renderer", "delete control",
                                            "delete local model", "delete default model"));
    EXPECT_THAT(EntryLog(), ElementsAre(Debug("_terminate callback function calling", "Terminate"),
                                        Debug("Delete", "Delete")));
}

TEST_F(AnAppListEntry, DeletesEachObjectOnceWhenTerminatedAndThenDestroyed) {
    AppListEntry::Create(&*m_entry);
    AppListEntry::Terminate(&*m_entry);
    Graph().events.clear();
    ClearLog();
    m_entry.reset();
    EXPECT_THAT(Graph().events, IsEmpty());
    EXPECT_THAT(Log(), ElementsAre(Debug("Delete", "Delete")));
}

TEST_F(AnAppListEntry, DeletesWhatIsLeftWhenDestroyedWithoutTerminate) {
    AppListEntry::Create(&*m_entry);
    Graph().events.clear();
    m_entry.reset();
    EXPECT_THAT(Graph().events, ElementsAre("delete list", "delete renderer", "delete control",
                                            "delete local model", "delete default model"));
}

TEST_F(AnAppListEntry, TerminatesWithoutUserData) {
    AppListEntry::Terminate(nullptr);
    EXPECT_THAT(Log(), ElementsAre(Debug("_terminate callback function calling", "Terminate")));
}

}  // namespace
}  // namespace applist::test
