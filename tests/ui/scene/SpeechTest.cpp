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

    void Set(desktop::Setting value) {
        EXPECT_EQ(desktop::WriteSetting(SPEECH_KEY, value), std::nullopt);
        m_speech.Update();
    }
    /// Shows a list that speaks.
    void SpeakList(int count) {
        Set(true);
        Fill(count);
        // A machine that needs half a second for the rows tells the empty list first.
        if (Calls().at(2).ends_with("services")) {
            EXPECT_TRUE(HeadlessToolkit::RunUntil(
                [] { return Calls().back().starts_with("say List changed"); }));
        }
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
    ASSERT_TRUE(HeadlessToolkit::RunUntil([] { return Calls().size() >= 3; }));
    // On a slow machine the number of rows is told afterwards.
    std::vector<std::string> first = Calls();
    first.resize(3);
    EXPECT_THAT(first, ElementsAre("open en", "stop", "say Data services. Row 2, 2 of 8"));
    VoiceCalls().clear();
    Set(false);
    Type("Down");
    EXPECT_THAT(Calls(), ElementsAre("close"));
}

TEST_F(TheSpeech, IsOffWithAMalformedSettingWhichIsLogged) {
    Set(int32_t{1});
    Fill(8);
    EXPECT_THAT(Calls(), IsEmpty());
    EXPECT_THAT(LogMessages(), testing::Contains("setting 'db/menu/accessibility/speech' counts as "
                                                 "missing: int:1 is not a bool"));
}

struct Language {
    const char* name;
    const char* code;
    /// The sentences of the title and the waiting, of row 1 of 2, of three entries and of one, and
    /// of the end.
    const char* waits;
    const char* row;
    const char* changed;
    const char* changedOne;
    const char* closes;
};

std::ostream& operator<<(std::ostream& out, const Language& language) {
    return out << language.name;
}

/// Chooses the language before the list is created.
class LanguageChoice {
protected:
    LanguageChoice() {
        setenv("LANGUAGE", testing::WithParamInterface<Language>::GetParam().name, 1);
    }
};

class TheSpeechOfEachLanguage : private LanguageChoice,
                                public TheSpeech,
                                public testing::WithParamInterface<Language> {
protected:
    static bool Says(const std::string& sentence) {
        return HeadlessToolkit::RunUntil(
            [&] { return testing::Value(Calls(), testing::Contains("say " + sentence)); });
    }
};

TEST_P(TheSpeechOfEachLanguage, HasEachSentence) {
    Set(true);
    EXPECT_TRUE(Says(GetParam().waits));
    EXPECT_EQ(Calls().front(), std::string("open ") + GetParam().code);
    Fill(3);
    EXPECT_TRUE(Says(GetParam().changed));
    model().RemoveItem(model().GetAllItems().at(2));
    Type("Down");
    EXPECT_TRUE(Says(GetParam().row));
    model().RemoveItem(model().GetAllItems().at(0));
    EXPECT_TRUE(Says(GetParam().changedOne));
    desktop::ListFocus::Of(list()).panel().ShowNote();
    EXPECT_TRUE(Says(GetParam().closes)) << testing::PrintToString(Calls());
}

INSTANTIATE_TEST_SUITE_P(
    In, TheSpeechOfEachLanguage,
    testing::Values(
        Language{"en", "en", "Data services. Waiting for the broadcast's services", "Row 2, 2 of 2",
                 "List changed, 3 entries", "List changed, 1 entry", "Closes in 20 seconds"},
        Language{"it", "it", "Servizi dati. In attesa dei servizi della trasmissione",
                 "Row 2, 2 di 2", "L'elenco è cambiato, 3 voci", "L'elenco è cambiato, 1 voce",
                 "Si chiude tra 20 secondi"},
        Language{"es", "es", "Servicios de datos. A la espera de los servicios de la emisión",
                 "Row 2, 2 de 2", "La lista ha cambiado, 3 entradas",
                 "La lista ha cambiado, 1 entrada", "Se cierra en 20 segundos"},
        Language{"pt_BR", "pt-BR", "Serviços de dados. Aguardando os serviços da transmissão",
                 "Row 2, 2 de 2", "A lista mudou, 3 itens", "A lista mudou, 1 item",
                 "Fecha em 20 segundos"},
        Language{"ar", "ar", "خدمات البيانات. في انتظار خدمات البث", "Row 2، 2 من 2",
                 "تغيّرت القائمة. عدد العناصر: 3", "تغيّرت القائمة. عدد العناصر: 1",
                 "تُغلق خلال 20 ثانية"}),
    [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace applist::test
