// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// When the list speaks and what cuts it off.
#include <algorithm>
#include <cstdlib>

#include <gmock/gmock.h>

#include "accessibility/Speech.h"
#include "data/SettingsStore.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeVoice.h"
#include "list/ListFocus.h"
#include "support/TemporaryDir.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

using desktop::SPEECH_KEY;
using testing::ElementsAre;
using testing::IsEmpty;

class TheSpeech : public SceneTest {
protected:
    TheSpeech() {
        setenv("APPLIST_PLATFORM_ROOT", m_folder.path().c_str(), 1);
        evas_event_callback_add(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                OnFrame, nullptr);
        VoiceCalls().clear();
        ClearLog();
    }
    ~TheSpeech() override {
        evas_event_callback_del(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                OnFrame);
    }
    TheSpeech(const TheSpeech&) = delete;
    TheSpeech& operator=(const TheSpeech&) = delete;
    TheSpeech(TheSpeech&&) = delete;
    TheSpeech& operator=(TheSpeech&&) = delete;

    void Set(desktop::Setting value) {
        EXPECT_EQ(desktop::WriteSetting(SPEECH_KEY, value), std::nullopt);
        m_speech.Update();
    }
    /// Shows a list that speaks.
    void SpeakList(int count) {
        Set(true);
        Fill(count);
        VoiceCalls().clear();
    }
    /// The voice's calls without frames.
    static std::vector<std::string> Calls() {
        std::vector<std::string> calls = VoiceCalls();
        std::erase(calls, "frame");
        return calls;
    }

    TemporaryDir m_folder;
    desktop::Speech m_speech;

private:
    static void OnFrame(void*, Evas*, void*) { VoiceCalls().emplace_back("frame"); }
};

TEST_F(TheSpeech, IsOffByDefaultAndThenDoesNotOpenTheVoice) {
    Fill(8);
    Type("Down");
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_FALSE(desktop::NewsListener::Any());
}

TEST_F(TheSpeech, StartsWithTitleAndRow) {
    Set(true);
    Fill(8);
    EXPECT_THAT(Calls(), ElementsAre("open en", "stop", "say Data services. Row 1, 1 of 8"));
}

TEST_F(TheSpeech, CutsOffAtAKeyAndSpeaksTheNewRowBeforeTheFrameThatShowsIt) {
    SpeakList(8);
    Type("Down");
    const std::vector<std::string>& calls = VoiceCalls();
    const auto row = std::find(calls.begin(), calls.end(), "say Row 2, 2 of 8");
    ASSERT_EQ(calls.front(), "stop");
    EXPECT_LT(row, std::find(calls.begin(), calls.end(), "frame"));
    EXPECT_NE(row, calls.end());
}

TEST_F(TheSpeech, IsCutOffByAKeyThatDoesNotMove) {
    SpeakList(8);
    Type("5");
    EXPECT_THAT(Calls(), ElementsAre("stop"));
}

TEST_F(TheSpeech, DoesNotCutOffARowForAMessage) {
    SpeakList(8);
    desktop::ListFocus::Of(list()).panel().ShowNote();
    EXPECT_THAT(Calls(), ElementsAre("say Closes in 20 seconds"));
}

TEST_F(TheSpeech, TakesEffectWhileTheListIsOpen) {
    Fill(8);
    Type("Down");
    Set(true);
    EXPECT_TRUE(HeadlessToolkit::RunUntil([] { return Calls().size() == 3; }));
    EXPECT_THAT(Calls(), ElementsAre("open en", "stop", "say Data services. Row 2, 2 of 8"));
    VoiceCalls().clear();
    Set(false);
    Type("Down");
    EXPECT_THAT(Calls(), ElementsAre("close"));
}

TEST_F(TheSpeech, IsOffWithAMalformedSettingWhichIsLogged) {
    Set(int32_t{1});
    Fill(8);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_THAT(LogMessages(), testing::Contains("setting 'db/menu/accessibility/speech' is int:1, "
                                                 "not a bool; the default is used"));
}

}  // namespace
}  // namespace applist::test
