// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
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

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* POPUP = "org.vantu.alert-syspopup";
constexpr const char* FLAG_KEY = "memory/tv-viewer/data_service";
constexpr const char* AUTORUN_KEY = "db/menu/broadcasting/autorun-dataservice";
constexpr const char* AUTOSTART_KEY = "memory/javamw/autostart-app";
// The factory's number of each region, at the place of the program's own number.
constexpr int FACTORY_VALUE[] = {0, 8, 81, 84, 85};

class Banner : public testing::Test {
protected:
    Banner() {
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
    static void HoldTheOtherSettings(bool autorun, int autostart) {
        TheSettings().bools[AUTORUN_KEY] = autorun ? 1 : 0;
        TheSettings().ints[AUTOSTART_KEY] = autostart;
    }

    // The banner's own lines, each with the function that wrote it.
    static std::vector<std::pair<std::string, LogLine>> Lines() {
        std::vector<std::pair<std::string, LogLine>> lines;
        for (const LogLine& line : Log()) {
            if (line.file == "BannerEntry.cpp") {
                lines.emplace_back(line.function, line);
            }
        }
        return lines;
    }
    static std::pair<std::string, LogLine> By(const std::string& function, const LogLine& line) {
        return {function, line};
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

// Every region with every value of the flag's three bits and of the other two settings.
class BannerTable : public Banner,
                    public testing::WithParamInterface<std::tuple<int, int, bool, bool>> {
protected:
    BannerTable() {
        HoldTheOtherSettings(std::get<2>(GetParam()), std::get<3>(GetParam()) ? 1 : 0);
    }

    const int localSet = std::get<0>(GetParam());
    const int flag = std::get<1>(GetParam());
    const std::string type = Expected(localSet, flag).type;
    const std::string text = TranslationOf(Expected(localSet, flag).messageId);
};

TEST_P(BannerTable, LaunchesThePopupWithTheReason) {
    OnASet(localSet, flag);
    EXPECT_TRUE(BannerCreate(nullptr));
    EXPECT_THAT(TheAppControl().calls,
                ElementsAre("create", "add text=" + text, "add type=" + type,
                            std::string("app id ") + POPUP, "send", "destroy"));
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_P(BannerTable, ReadsTheDataServiceFlagInItalyOnly) {
    OnASet(localSet, flag);
    BannerCreate(nullptr);
    ASSERT_EQ(TheFactoryData().reads.size(), 1U);
    EXPECT_EQ(TheFactoryData().reads[0].id, 194);
    if (localSet == 1) {
        EXPECT_THAT(TheSettings().reads, ElementsAre(std::string("int ") + FLAG_KEY));
    } else {
        EXPECT_THAT(TheSettings().reads, IsEmpty());
    }
}

TEST_P(BannerTable, SaysWhatItDoes) {
    OnASet(localSet, flag);
    BannerCreate(nullptr);
    EXPECT_THAT(Lines(),
                ElementsAre(By("BannerCreate", Debug("Localset is: " + std::to_string(localSet))),
                            By("Send", Debug("Adding extra data: key=text, value=" + text)),
                            By("Send", Debug("Adding extra data: key=type, value=" + type)),
                            By("BannerCreate", Debug("Exiting EFL main loop."))));
}

INSTANTIATE_TEST_SUITE_P(AllRegionsAndSettings, BannerTable,
                         testing::Combine(testing::Range(0, 5), testing::Range(0, 8),
                                          testing::Bool(), testing::Bool()));

TEST_F(Banner, GivesTheMissingServiceAsReasonWhenTheFlagCannotBeRead) {
    OnASet(1, 0);
    TheSettings().ints.clear();
    BannerCreate(nullptr);
    EXPECT_EQ(TheAppControl().calls.at(1),
              "add text=" + TranslationOf("SID_DATA_SERVICE_IS_NOT_PROVIDED"));
}

TEST_F(Banner, LooksAtTwoBitsOfTheFlagAlone) {
    OnASet(1, ~6);
    BannerCreate(nullptr);
    EXPECT_EQ(TheAppControl().calls.at(1),
              "add text=" + TranslationOf("SID_DATA_SERVICE_IS_NOT_PROVIDED"));
}

TEST_F(Banner, EndsSilentlyWhenNoRequestCanBeMade) {
    OnASet(3, 0);
    TheAppControl().createResult = -1;
    EXPECT_TRUE(BannerCreate(nullptr));
    EXPECT_THAT(TheAppControl().calls, ElementsAre("create"));
    EXPECT_THAT(Lines(), ElementsAre(By("BannerCreate", Debug("Localset is: 3")),
                                     By("BannerCreate", Debug("Exiting EFL main loop."))));
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(Banner, EndsAfterAnErrorLineWhenTheLaunchFails) {
    OnASet(0, 0);
    TheAppControl().sendResult = -1;
    EXPECT_TRUE(BannerCreate(nullptr));
    EXPECT_EQ(TheAppControl().calls.back(), "destroy");
    const auto lines = Lines();
    ASSERT_EQ(lines.size(), 5U);
    EXPECT_EQ(lines[3], By("Send", Error("org.vantu.alert-syspopup launching failed")));
    EXPECT_EQ(lines[4], By("BannerCreate", Debug("Exiting EFL main loop.")));
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(Banner, LeavesNoRequestBehind) {
    OnASet(1, 2);
    BannerCreate(nullptr);
    EXPECT_EQ(TheAppControl().alive, 0);
}

TEST_F(Banner, DoesNothingInTheRestOfItsLife) {
    BannerResume(nullptr);
    BannerService(nullptr, nullptr);
    BannerPause(nullptr);
    BannerTerminate(nullptr);
    EXPECT_THAT(LogMessages(), IsEmpty());
    EXPECT_THAT(TheAppControl().calls, IsEmpty());
    EXPECT_THAT(TheSettings().reads, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
}

}  // namespace
}  // namespace applist::test
