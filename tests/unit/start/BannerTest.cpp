// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "BannerEntry.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeAppControl.h"
#include "fakes/FakeFactoryData.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeSettings.h"
#include "fakes/FakeText.h"

namespace applist::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* POPUP = "org.vantu.alert-syspopup";
constexpr const char* FLAG_KEY = "memory/tv-viewer/data_service";
constexpr const char* AUTORUN_KEY = "db/menu/broadcasting/autorun-dataservice";
constexpr const char* AUTOSTART_KEY = "memory/javamw/autostart-app";
// The factory data's number of each region, indexed by the program's own number.
constexpr int FACTORY_VALUE[] = {0, 8, 81, 84, 85};

class Banner : public testing::Test {
protected:
    Banner() { Reset(); }

    static void Reset() {
        TheApp() = {};
        TheAppControl() = {};
        TheSettings() = {};
        TheFactoryData() = {};
        ClearLog();
    }

    static void OnASet(int localSet, int flag) {
        TheFactoryData().Hold(FACTORY_VALUE[localSet]);
        TheSettings().ints[FLAG_KEY] = flag;
    }

    // The banner's log lines and its calls of the platform.
    static std::vector<LogLine> Steps() {
        std::vector<LogLine> steps;
        std::copy_if(Log().begin(), Log().end(), std::back_inserter(steps), [](const auto& line) {
            return line.file == "BannerEntry.cpp" || line.file.empty();
        });
        return steps;
    }
};

struct Explanation {
    const char* type;
    const char* messageId;
};

Explanation Expected(int localSet, int flag) {
    if (localSet != 1) {
        return {"unavailable", "SID_NOT_AVAILABLE"};
    }
    const bool announced =
        flag == 2 || flag == 3 || flag == 4 || flag == 5 || flag == 6 || flag == 7;
    return {"notification", announced ? "TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG"
                                      : "SID_DATA_SERVICE_IS_NOT_PROVIDED"};
}

// Every region with every value of the flag's three bits.
class BannerTable : public Banner, public testing::WithParamInterface<std::tuple<int, int>> {
protected:
    // The other two settings in all their states, which must not matter.
    void ForEachRow(const std::function<void()>& check) const {
        for (const int state : {0, 1, 2, 3}) {
            Reset();
            OnASet(localSet, flag);
            TheSettings().bools[AUTORUN_KEY] = state % 2;
            TheSettings().ints[AUTOSTART_KEY] = state / 2;
            SCOPED_TRACE(state);
            check();
        }
    }

    const int localSet = std::get<0>(GetParam());
    const int flag = std::get<1>(GetParam());
    const std::string type = Expected(localSet, flag).type;
    const std::string text = TranslationOf(Expected(localSet, flag).messageId);
};

TEST_P(BannerTable, LaunchesThePopupWithTheReasonAndExits) {
    ForEachRow([this] {
        EXPECT_TRUE(BannerCreate(nullptr));
        EXPECT_THAT(
            Steps(),
            ElementsAre(Debug("Localset is: " + std::to_string(localSet), "BannerCreate"),
                        Event("create"), Event("add text=" + text),
                        Debug("Adding extra data: key=text, value=" + text, "Send"),
                        Event("add type=" + type),
                        Debug("Adding extra data: key=type, value=" + type, "Send"),
                        Event(std::string("app id ") + POPUP), Event("send"), Event("destroy"),
                        Debug("Exiting EFL main loop.", "BannerCreate"), Event("ui_app_exit")));
    });
}

TEST_P(BannerTable, ReadsTheRegionAndInItalyTheDataServiceFlag) {
    using Reads = std::vector<std::string>;
    ForEachRow([this] {
        BannerCreate(nullptr);
        ASSERT_EQ(TheFactoryData().reads.size(), 1U);
        EXPECT_EQ(TheFactoryData().reads[0].id, 194);
        EXPECT_EQ(TheSettings().reads,
                  localSet == 1 ? Reads{std::string("int ") + FLAG_KEY} : Reads{});
    });
}

INSTANTIATE_TEST_SUITE_P(AllRegionsAndFlags, BannerTable,
                         testing::Combine(testing::Range(0, 5), testing::Range(0, 8)));

TEST_F(Banner, GivesTheMissingServiceAsReasonWhenTheFlagCannotBeRead) {
    OnASet(1, 0);
    TheSettings().ints.clear();
    BannerCreate(nullptr);
    EXPECT_THAT(Steps(),
                Contains(Event("add text=" + TranslationOf("SID_DATA_SERVICE_IS_NOT_PROVIDED"))));
}

TEST_F(Banner, LooksAtTwoBitsOfTheFlagAlone) {
    OnASet(1, ~6);
    BannerCreate(nullptr);
    EXPECT_THAT(Steps(),
                Contains(Event("add text=" + TranslationOf("SID_DATA_SERVICE_IS_NOT_PROVIDED"))));
}

TEST_F(Banner, EndsSilentlyWhenNoRequestCanBeMade) {
    OnASet(3, 0);
    TheAppControl().createResult = -1;
    EXPECT_TRUE(BannerCreate(nullptr));
    EXPECT_THAT(Steps(), ElementsAre(Debug("Localset is: 3"), Event("create"),
                                     Debug("Exiting EFL main loop."), Event("ui_app_exit")));
}

TEST_F(Banner, EndsAfterAnErrorLineWhenTheLaunchFails) {
    OnASet(0, 0);
    TheAppControl().sendResult = -1;
    EXPECT_TRUE(BannerCreate(nullptr));
    const auto steps = Steps();
    ASSERT_EQ(steps.size(), 12U);
    EXPECT_THAT(std::vector(steps.end() - 5, steps.end()),
                ElementsAre(Event("send"), Event("destroy"),
                            Error("org.vantu.alert-syspopup launching failed", "Send"),
                            Debug("Exiting EFL main loop."), Event("ui_app_exit")));
}

TEST_F(Banner, DestroysEveryRequest) {
    OnASet(1, 2);
    BannerCreate(nullptr);
    EXPECT_EQ(TheAppControl().alive, 0);
}

TEST_F(Banner, DoesNothingInTheRestOfItsLife) {
    BannerResume(nullptr);
    BannerService(nullptr, nullptr);
    BannerPause(nullptr);
    BannerTerminate(nullptr);
    EXPECT_THAT(Log(), IsEmpty());
    EXPECT_THAT(TheSettings().reads, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
}

}  // namespace
}  // namespace applist::test
