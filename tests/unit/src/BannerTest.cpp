// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "BannerEntry.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeAppControl.h"
#include "fakes/FakeFactoryData.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeSettings.h"
#include "fakes/FakeText.h"

using testing::IsEmpty;

namespace applist::test {
namespace {

constexpr const char* FLAG_KEY = "memory/tv-viewer/data_service";
constexpr const char* ENDED = "BannerCreate: Exiting EFL main loop.\nui_app_exit\n";

class Banner : public testing::Test {
protected:
    /// A set in this region, by the program's own number, with these settings.
    static void OnASet(int localSet, int flag, int state = 0) {
        constexpr int FACTORY_VALUE[] = {0, 8, 81, 84, 85};
        TheApp() = {};
        TheAppControl() = {};
        TheSettings() = {};
        TheFactoryData() = {};
        TheFactoryData().Hold(FACTORY_VALUE[localSet]);
        TheSettings().ints = {{FLAG_KEY, flag}, {"memory/javamw/autostart-app", state / 2}};
        TheSettings().bools = {{"db/menu/broadcasting/autorun-dataservice", state % 2}};
        ClearLog();
    }

    /// Starts the banner. Returns its log lines and its calls of the platform.
    static std::string Run() {
        EXPECT_TRUE(BannerCreate(nullptr));
        EXPECT_EQ(TheAppControl().alive, 0);
        const std::string all = LogText();
        const size_t begin = all.find("BannerCreate: Localset is: ");
        std::string steps = all.substr(begin);
        const size_t read = steps.find("GetDataServiceFlag: ");
        return read == std::string::npos ? steps
                                         : steps.erase(read, steps.find('\n', read) + 1 - read);
    }

    static std::string Launched(int localSet, const std::string& type, const std::string& textId) {
        const std::string text = TranslationOf(textId);
        return Lines({"BannerCreate: Localset is: " + std::to_string(localSet), "create",
                      "add text=" + text, "Send: Adding extra data: key=text, value=" + text,
                      "add type=" + type, "Send: Adding extra data: key=type, value=" + type,
                      "app id org.vantu.alert-syspopup", "send", "destroy"});
    }
};

// The two other settings must not matter.
TEST_F(Banner, LaunchesThePopupInEveryRegionForEveryFlagAndEnds) {
    for (const int localSet : {0, 1, 2, 3, 4}) {
        for (const int flag : {0, 1, 2, 3, 4, 5, 6, 7}) {
            for (const int state : {0, 1, 2, 3}) {
                SCOPED_TRACE(testing::Message() << localSet << " " << flag << " " << state);
                OnASet(localSet, flag, state);
                const std::string expected =
                    localSet != 1 ? Launched(localSet, "unavailable", "SID_NOT_AVAILABLE")
                    : flag >= 2
                        ? Launched(1, "notification", "TV_SID_NOT_AVAILABLE_AUTO_RUN_DATA_MSG")
                        : Launched(1, "notification", "SID_DATA_SERVICE_IS_NOT_PROVIDED");
                EXPECT_EQ(Run(), expected + ENDED);
                ASSERT_EQ(TheFactoryData().reads.size(), 1U);
                EXPECT_EQ(TheFactoryData().reads[0].id, 194);
                using Reads = std::vector<std::string>;
                EXPECT_EQ(TheSettings().reads,
                          localSet == 1 ? Reads{std::string("int ") + FLAG_KEY} : Reads{});
            }
        }
    }
}

TEST_F(Banner, GivesTheMissingServiceAsReasonWithoutAFlagOrItsTwoBits) {
    OnASet(1, ~6);
    EXPECT_EQ(Run(), Launched(1, "notification", "SID_DATA_SERVICE_IS_NOT_PROVIDED") + ENDED);
    OnASet(1, 0);
    TheSettings().ints.clear();
    EXPECT_THAT(Run(), testing::HasSubstr(TranslationOf("SID_DATA_SERVICE_IS_NOT_PROVIDED")));
}

TEST_F(Banner, EndsSilentlyIfNoRequestCanBeMade) {
    OnASet(3, 0);
    TheAppControl().createResult = -1;
    EXPECT_EQ(Run(), Lines({"BannerCreate: Localset is: 3", "create"}) + ENDED);
}

TEST_F(Banner, EndsAfterAnErrorLineIfTheLaunchFails) {
    OnASet(0, 0);
    TheAppControl().sendResult = -1;
    EXPECT_EQ(Run(), Launched(0, "unavailable", "SID_NOT_AVAILABLE") +
                         "ERROR Send: org.vantu.alert-syspopup launching failed\n" + ENDED);
}

TEST_F(Banner, DoesNothingInTheRestOfItsLife) {
    OnASet(1, 0);
    BannerResume(nullptr);
    BannerService(nullptr, nullptr);
    BannerPause(nullptr);
    BannerTerminate(nullptr);
    EXPECT_EQ(LogText(), "");
    EXPECT_THAT(TheSettings().reads, IsEmpty());
    EXPECT_EQ(TheApp().exits, 0);
}

}  // namespace
}  // namespace applist::test
