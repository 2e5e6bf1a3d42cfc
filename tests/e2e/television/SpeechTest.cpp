// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A viewer who hears the list on a set without a session bus, in every language.
#include <memory>

#include <gmock/gmock.h>

#include "support/DrivenMiddleware.h"
#include "support/SpeechService.h"
#include "support/Television.h"
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

class ABlindViewer : public testing::Test {
protected:
    bool Hears(const std::string& text) { return m_service.WaitForLast(text); }

    TemporaryDir m_folder;
    SpeechService m_service{m_folder.path() / "speech"};
    Television m_set{{{"LANGUAGE", "pt_BR"},
                      {"SPEECHD_ADDRESS", m_service.Address()},
                      {"DBUS_SESSION_BUS_ADDRESS", std::nullopt}},
                     {"openbox", ""}};
    DrivenMiddleware m_middleware{m_set.systemBus().Address()};
    std::unique_ptr<ChildProcess> m_application;
};

TEST_F(ABlindViewer, HearsTheWholeTour) {
    const std::string waits = "Aguardando os serviços da transmissão";
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    m_application = m_set.StartApplication();
    ASSERT_TRUE(Hears("Serviços de dados. " + waits));
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(
        m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Guida TV"}, {"c", ".c"}}));
    ASSERT_TRUE(Hears("A lista mudou, 3 itens"));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    m_set.screen().TypeKey("Down");
    ASSERT_TRUE(Hears("Guida TV, 2 de 3"));
    ASSERT_TRUE(m_middleware.Ask(Function::ModifyItem, {{"b", "Guida TV"}, {"d", "Delta"}}));
    ASSERT_TRUE(Hears("A lista mudou, 3 itens"));
    ASSERT_TRUE(m_middleware.Ask(Function::RemoveItem, {{"d", "Delta"}}));
    ASSERT_TRUE(Hears("A lista mudou, 2 itens"));
    ASSERT_TRUE(m_middleware.Ask(Function::RemoveAllItems));
    ASSERT_TRUE(Hears(waits));
    m_set.screen().TypeKey("F10");
    EXPECT_EQ(m_application->WaitForExit(), 0) << m_application->Errors();
    EXPECT_THAT(m_service.Utterances(), ElementsAre("Serviços de dados. " + waits, "Alpha, 1 de 3",
                                                    "A lista mudou, 3 itens", "Guida TV, 2 de 3",
                                                    "Delta, 2 de 3", "A lista mudou, 3 itens",
                                                    ".c, 2 de 2", "A lista mudou, 2 itens", waits));
    EXPECT_EQ(m_service.Received().at(1), "SET SELF LANGUAGE pt-BR");
    EXPECT_EQ(m_service.Received().back(), "CANCEL SELF");
    EXPECT_THAT(m_application->Errors(), Not(HasSubstr("Speech")));
}

// The list is locked by then, without a session bus.
TEST_F(ABlindViewer, HearsTheListAsSoonAsSpeechIsSwitchedOn) {
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "false"}), 0);
    m_application = m_set.StartApplication();
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    EXPECT_THAT(m_service.Received(), testing::IsEmpty());
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    EXPECT_TRUE(Hears("Serviços de dados. Alpha, 1 de 2"));
}

TEST_F(ABlindViewer, HasAProgramThatDoesNotWakeUpAtRest) {
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    m_application = m_set.StartApplication();
    ASSERT_TRUE(m_middleware.AwaitApplication());
    ASSERT_TRUE(Hears("Serviços de dados. Aguardando os serviços da transmissão"));
    EXPECT_TRUE(m_application->WaitForRest(REST));
    ASSERT_TRUE(m_middleware.Ask(Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
    ASSERT_TRUE(Hears("A lista mudou, 2 itens"));
    EXPECT_TRUE(m_application->WaitForRest(REST));
}

TEST_F(ABlindViewer, HearsTheAlert) {
    ASSERT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
    ASSERT_EQ(m_set.Configure({"set", SETTING, "bool", "true"}), 0);
    m_application = m_set.StartApplication();
    EXPECT_TRUE(Hears("Informação. Este canal não oferece serviço de dados."))
        << testing::PrintToString(m_service.Received()) << m_application->Errors();
}

}  // namespace
}  // namespace applist::test
