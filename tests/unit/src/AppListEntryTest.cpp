// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <new>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "AppListEntry.h"
#include "VirtualEcore.h"
#include "applist/AppList.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "applist/LocalAppListModel.h"
#include "fakes/FakeApp.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeScreen.h"
#include "fakes/FakeTransport.h"
#include "support/AllocationWatch.h"

using applist::headless::TheEcore;
using applist::headless::VirtualEcore;

namespace applist::test {
namespace {

/// Returns the objects of an entry's graph.
using Parts = std::vector<const void*>;
Parts (*partsOf)(const AppListEntry& entry);

/// Only an explicit instantiation may name private fields.
template <auto... Fields>
struct PartsAre {
    static inline const bool known = [] {
        partsOf = [](const AppListEntry& entry) { return Parts{entry.*Fields...}; };
        return true;
    }();
};
template struct PartsAre<&AppListEntry::m_list, &AppListEntry::m_renderer, &AppListEntry::m_control,
                         &AppListEntry::m_localModel, &AppListEntry::m_defaultModel>;
constexpr const char* PART_NAMES[] = {"list", "renderer", "control", "local model",
                                      "default model"};
constexpr size_t LOCAL_MODEL = 3;

/// An entry with its real graph, on a fake screen and a fake channel.
class AnAppListEntry : public testing::Test {
protected:
    AnAppListEntry() {
        TheApp() = FakeApp{};
        TheEcore() = VirtualEcore{};
        TheScreen() = FakeScreen{};
        ClearLog();
        m_entry.emplace("org.vantu.applist");
    }

    void Create() {
        EXPECT_TRUE(AppListEntry::Create(&*m_entry));
        WatchParts();
    }

    void WatchParts() {
        m_watch.emplace([this, parts = partsOf(*m_entry)](const void* block) mutable {
            for (size_t i = 0; i < parts.size(); ++i) {
                // A later block may get the address of a deleted object.
                if (parts[i] == block && std::exchange(parts[i], nullptr) != nullptr) {
                    m_deleted += std::string(m_deleted.empty() ? "" : ", ") + PART_NAMES[i];
                }
            }
        });
    }

    void Launch() { AppListEntry::Service(nullptr, &*m_entry); }

    /// The lines of the entry itself and the requests to end, since the last call.
    static std::string EntryLog() {
        std::vector<std::string> lines;
        for (const LogLine& line : Log()) {
            if (line.file == "AppListEntry.cpp" || line.message == "ui_app_exit") {
                lines.push_back((line.priority == Error("").priority ? "ERROR " : "") +
                                line.function + (line.file.empty() ? "" : ": ") + line.message);
            }
        }
        ClearLog();
        return Lines(lines);
    }

    std::optional<AppListEntry> m_entry;
    std::string m_deleted;
    std::optional<DeletionWatch> m_watch;
};

const std::string LAUNCHED = Lines({"Service: _service callback function calling",
                                    "HandleService: _handle_service function calling",
                                    "HandleCmd: _handle_cmd function calling"});
const std::string CLOSED =
    LAUNCHED + Lines({"HandleCmd: Closing application by calling app_efl_exit()", "ui_app_exit"});
constexpr const char* IN_ORDER = "list, renderer, control, local model, default model";

TEST_F(AnAppListEntry, BuildsNothingBeforeCreate) {
    EXPECT_EQ(LogText(), "");
}

TEST_F(AnAppListEntry, BuildsTheChannelThenTheViewsAndConnectsThemLast) {
    Create();
    std::vector<std::string> messages = LogMessages();
    std::erase_if(messages, [](const std::string& message) {
        return message.find("listener address") != std::string::npos;
    });
    EXPECT_THAT(messages, testing::ElementsAre("_create callback function calling",
                                               "transport created: Applist", "IPCApplist",
                                               "renderer created: org.vantu.applist",
                                               "Creating time this will execute OnTimer() in 65s",
                                               "renderer has its model"));
    const auto* localModel = static_cast<const LocalAppListModel*>(partsOf(*m_entry)[LOCAL_MODEL]);
    EXPECT_EQ(TheScreen().model, static_cast<const AppListModel*>(localModel));
}

TEST_F(AnAppListEntry, ConnectsTheMiddlewareWithScreenAndTimer) {
    Create();
    std::vector<char> addAnItem{0, 0, 0, 0, 1, 0, 0, 0, 'a', '\xD4', '\x07', 0, 0};
    TheTransport().live->HandleMessage(addAnItem);
    ASSERT_EQ(TheScreen().rows.size(), 1U);
    EXPECT_EQ(TheScreen().rows[0]->GetUnigueId(), "a");
    EXPECT_EQ(TheEcore().history.back(), "ecore_timer_reset(timer)");
}

TEST_F(AnAppListEntry, RefusesToStartWithoutUserData) {
    EXPECT_FALSE(AppListEntry::Create(nullptr));
    EXPECT_EQ(LogText(), Lines({"Create: _create callback function calling",
                                "ERROR Create: service data is null"}));
}

// The views use the toolkit, which is shut down before the entry is destroyed.
TEST_F(AnAppListEntry, DeletesAtOnceWhatAFailedCreateHasBuilt) {
    TheEcore().onCall = [this](const std::string&) {
        WatchParts();
        throw std::bad_alloc();
    };
    EXPECT_FALSE(AppListEntry::Create(&*m_entry));
    EXPECT_EQ(m_deleted, "renderer, local model, default model");
    EXPECT_THAT(Log(), testing::Contains(Error("Callback aborted: std::bad_alloc")));
}

TEST_F(AnAppListEntry, ClosesOnEachLaunchAfterTheFirst) {
    Create();
    ClearLog();
    for (const int exits : {0, 1, 2}) {
        Launch();
        EXPECT_EQ(TheApp().exits, exits);
        EXPECT_EQ(EntryLog(), exits == 0 ? LAUNCHED : CLOSED);
    }
}

TEST_F(AnAppListEntry, CountsLaunchesFromCreateOn) {
    Launch();
    Create();
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(AnAppListEntry, ForgetsItsLaunchesOnTerminate) {
    Create();
    Launch();
    AppListEntry::Terminate(&*m_entry);
    Launch();
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(AnAppListEntry, IgnoresALaunchWithoutUserData) {
    AppListEntry::Service(nullptr, nullptr);
    EXPECT_EQ(LogText(), Lines({"Service: _service callback function calling",
                                "ERROR Service: service data is null"}));
}

TEST_F(AnAppListEntry, ChangesNothingOnPauseAndResume) {
    Create();
    ClearLog();
    for (void* data : {static_cast<void*>(&*m_entry), static_cast<void*>(nullptr)}) {
        AppListEntry::Pause(data);
        AppListEntry::Resume(data);
        EXPECT_EQ(LogText(), Lines({"Pause: _pause callback function calling",
                                    "Resume: _resume callback function calling"}));
        ClearLog();
    }
    EXPECT_EQ(m_deleted, "");
}

TEST_F(AnAppListEntry, DeletesEachObjectOnceWhenItIsTerminatedAndThenDestroyed) {
    Create();
    ClearLog();
    AppListEntry::Terminate(&*m_entry);
    EXPECT_EQ(m_deleted, IN_ORDER);
    EXPECT_EQ(EntryLog(),
              Lines({"Terminate: _terminate callback function calling", "Delete: Delete"}));
    m_entry.reset();
    EXPECT_EQ(m_deleted, IN_ORDER);
    EXPECT_EQ(LogText(), "Delete: Delete\n");
}

TEST_F(AnAppListEntry, DeletesWhatIsLeftWhenItIsDestroyedWithoutTerminate) {
    Create();
    m_entry.reset();
    EXPECT_EQ(m_deleted, IN_ORDER);
}

TEST_F(AnAppListEntry, TerminatesWithoutUserData) {
    AppListEntry::Terminate(nullptr);
    EXPECT_EQ(LogText(), "Terminate: _terminate callback function calling\n");
}

}  // namespace
}  // namespace applist::test
