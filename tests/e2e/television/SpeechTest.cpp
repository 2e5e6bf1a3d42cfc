// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A viewer who hears the list on a set without a session bus, in every language.
#include <memory>

#include <gmock/gmock.h>

#include "support/DrivenMiddleware.h"
#include "support/SpeechService.h"
#include "support/SteppedClock.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr const char* SETTING = "db/menu/accessibility/speech";
/// Longer than the program waits for a reply of the speech service.
constexpr std::chrono::seconds REST{5};

struct Language {
    std::string name;
    std::string code;
    std::string title;
    std::string comma;
    std::string of;
    std::string changed;
    std::string changedOne;
    std::string waits;
    std::string closes;

    std::string Row(const std::string& row, int position, int count) const {
        return row + comma + " " + std::to_string(position) + " " + of + " " +
               std::to_string(count);
    }
    std::string Changed(int count) const {
        std::string text = changed;
        return text.replace(text.find('#'), 1, std::to_string(count));
    }
};
std::ostream& operator<<(std::ostream& out, const Language& language) {
    return out << language.name;
}

const std::vector<Language>& Languages() {
    static const std::vector<Language> languages{
        {"en", "en", "Data services", ",", "of", "List changed, # entries", "List changed, 1 entry",
         "Waiting for the broadcast's services", "Closes in 20 seconds"},
        {"it", "it", "Servizi dati", ",", "di", "L'elenco è cambiato, # voci",
         "L'elenco è cambiato, 1 voce", "In attesa dei servizi della trasmissione",
         "Si chiude tra 20 secondi"},
        {"es", "es", "Servicios de datos", ",", "de", "La lista ha cambiado, # entradas",
         "La lista ha cambiado, 1 entrada", "A la espera de los servicios de la emisión",
         "Se cierra en 20 segundos"},
        {"pt_BR", "pt-BR", "Serviços de dados", ",", "de", "A lista mudou, # itens",
         "A lista mudou, 1 item", "Aguardando os serviços da transmissão", "Fecha em 20 segundos"},
        {"ar", "ar", "خدمات البيانات", "،", "من", "تغيّرت القائمة. عدد العناصر: #",
         "تغيّرت القائمة. عدد العناصر: 1", "في انتظار خدمات البث", "تُغلق خلال 20 ثانية"},
    };
    return languages;
}

class ABlindViewer : public testing::TestWithParam<Language> {
protected:
    explicit ABlindViewer(const Language& language = GetParam())
        : m_set({{"LANGUAGE", language.name},
                 {"SPEECHD_ADDRESS", m_service.Address()},
                 {"DBUS_SESSION_BUS_ADDRESS", std::nullopt}},
                {"openbox", ""}) {}

    void Start() {
        ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
        m_application = m_set.StartApplication(m_clock.Wrapper("1"));
    }
    bool Hears(const std::string& text) { return m_service.WaitForLast(text); }
    /// Lets time pass. The calls wake the list, which handles its timers before the second one.
    void Pass(int seconds) {
        m_clock.Pass(seconds);
        for (int call = 0; call < 2; ++call) {
            ASSERT_TRUE(m_middleware.Ask(Function::GetAllItems));
        }
    }

    TemporaryDir m_folder;
    SpeechService m_service{m_folder.path() / "speech"};
    Television m_set;
    SteppedClock m_clock{m_set};
    DrivenMiddleware m_middleware{m_set.systemBus().Address()};
    std::unique_ptr<ChildProcess> m_application;
};

TEST_P(ABlindViewer, HearsTheWholeTour) {
    const Language& in = GetParam();
    Start();
    ASSERT_TRUE(Hears(in.title + ". " + in.waits));
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(
        m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Guida TV"}, {"c", ".c"}}));
    ASSERT_TRUE(Hears(in.Changed(3)));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    m_set.screen().TypeKey("Down");
    ASSERT_TRUE(Hears(in.Row("Guida TV", 2, 3)));
    ASSERT_TRUE(m_middleware.Ask(Function::ModifyItem, {{"b", "Guida TV"}, {"d", "Delta"}}));
    ASSERT_TRUE(Hears(in.Changed(3)));
    ASSERT_TRUE(m_middleware.Ask(Function::RemoveItem, {{"d", "Delta"}}));
    ASSERT_TRUE(Hears(in.Changed(2)));
    ASSERT_NO_FATAL_FAILURE(Pass(46));
    ASSERT_TRUE(Hears(in.closes));
    ASSERT_TRUE(m_middleware.Ask(Function::RemoveItem, {{"a", "Alpha"}}));
    ASSERT_TRUE(Hears(in.changedOne));
    ASSERT_TRUE(m_middleware.Ask(Function::RemoveAllItems));
    ASSERT_TRUE(Hears(in.waits));
    m_set.screen().TypeKey("F10");
    EXPECT_EQ(m_application->WaitForExit(), 0) << m_application->Errors();
    EXPECT_THAT(m_service.Utterances(),
                ElementsAre(in.title + ". " + in.waits, in.Row("Alpha", 1, 3), in.Changed(3),
                            in.Row("Guida TV", 2, 3), in.Row("Delta", 2, 3), in.Changed(3),
                            in.Row(".c", 2, 2), in.Changed(2), in.closes, in.changedOne, in.waits));
    EXPECT_EQ(m_service.Received().at(1), "SET SELF LANGUAGE " + in.code);
    EXPECT_EQ(m_service.Received().back(), "CANCEL SELF");
    EXPECT_THAT(m_application->Errors(), Not(HasSubstr("Speech")));
}

INSTANTIATE_TEST_SUITE_P(In, ABlindViewer, testing::ValuesIn(Languages()),
                         [](const auto& test) { return test.param.name; });

class AnEnglishViewer : public ABlindViewer {};

INSTANTIATE_TEST_SUITE_P(In, AnEnglishViewer, testing::Values(Languages().front()),
                         [](const auto& test) { return test.param.name; });

// The list is locked by then, without a session bus.
TEST_P(AnEnglishViewer, HearsTheListAsSoonAsSpeechIsSwitchedOn) {
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "false"}), 0);
    m_application = m_set.StartApplication();
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    EXPECT_THAT(m_service.Received(), testing::IsEmpty());
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    EXPECT_TRUE(Hears("Data services. Alpha, 1 of 2"));
}

TEST_P(AnEnglishViewer, HasAProgramThatDoesNotWakeUpAtRest) {
    Start();
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(Hears("Data services. Waiting for the broadcast's services"));
    EXPECT_TRUE(m_application->WaitForRest(REST));
    ASSERT_TRUE(m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
    ASSERT_TRUE(Hears("List changed, 2 entries"));
    EXPECT_TRUE(m_application->WaitForRest(REST));
}

TEST_P(AnEnglishViewer, HearsTheAlert) {
    ASSERT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    m_application = m_set.StartApplication();
    EXPECT_TRUE(Hears("Information. This channel does not provide a data service."))
        << testing::PrintToString(m_service.Received()) << m_application->Errors();
}

}  // namespace
}  // namespace applist::test
