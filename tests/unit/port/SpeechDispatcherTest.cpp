// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The client of speech-dispatcher and a service that works, hangs, refuses, dies or is missing.
#include <cstdlib>

#include <gmock/gmock.h>

#include "accessibility/Voice.h"
#include "fakes/FakePlatformLog.h"
#include "support/GlibWait.h"
#include "support/SpeechService.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

using desktop::OpenVoice;
using Manner = SpeechService::Manner;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class TheVoice : public testing::Test {
protected:
    void SetUp() override { ClearLog(); }
    void Open(Manner manner = Manner::ANSWERS) {
        m_service.emplace(m_folder.path() / "socket", manner);
        OpenAt(m_service->Address());
    }
    void OpenAt(const std::string& address) {
        setenv("SPEECHD_ADDRESS", address.c_str(), 1);
        m_voice = OpenVoice("pt-BR");
    }
    /// Waits until the service has received the text.
    bool Hears(const std::string& text) {
        return RunUntil([&] {
            const auto all = m_service->Utterances();
            return !all.empty() && all.back() == text;
        });
    }
    /// What the service received after the setup.
    std::vector<std::string> Heard() {
        auto received = m_service->Received();
        received.erase(received.begin(), received.begin() + 3);
        return received;
    }
    /// Waits for the line that says that speech is off, and makes two more calls.
    std::string Failure() {
        EXPECT_TRUE(RunUntil([] { return !Log().empty(); }));
        m_voice->Say("later");
        m_voice->Stop();
        EXPECT_EQ(Log().size(), 1U);
        return Log().empty() ? "" : Log().front().message;
    }

    TemporaryDir m_folder;
    std::optional<SpeechService> m_service;
    std::unique_ptr<desktop::Voice> m_voice;
};

TEST_F(TheVoice, SetsNameLanguageAndPriorityBeforeItSpeaks) {
    Open();
    m_voice->Say("Guida TV, 1 of 8");
    ASSERT_TRUE(Hears("Guida TV, 1 of 8"));
    EXPECT_THAT(m_service->Received(),
                ElementsAre("SET SELF CLIENT_NAME applist:applist:main", "SET SELF LANGUAGE pt-BR",
                            "SET SELF PRIORITY MESSAGE", "say Guida TV, 1 of 8"));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(TheVoice, SpeaksTextsInTheirOrder) {
    Open();
    m_voice->Say("one");
    m_voice->Say("two");
    ASSERT_TRUE(Hears("two"));
    EXPECT_THAT(Heard(), ElementsAre("say one", "say two"));
}

TEST_F(TheVoice, CancelsWhatIsSpokenAndSkipsWhatIsNot) {
    Open();
    m_voice->Say("one");
    ASSERT_TRUE(Hears("one"));
    m_voice->Say("two");
    m_voice->Say("three");
    m_voice->Stop();
    m_voice->Say("four");
    ASSERT_TRUE(Hears("four"));
    EXPECT_EQ(Heard().back(), "say four");
    EXPECT_THAT(Heard(), testing::Contains("CANCEL SELF"));
    EXPECT_THAT(Heard(), testing::Not(testing::Contains("say three")));
}

// Each exchange takes one iteration of the loop, so the text leaves in the third.
TEST_F(TheVoice, NeedsTwoExchangesBeforeTheTextThatCutsAnotherOff) {
    Open();
    m_voice->Say("one");
    ASSERT_TRUE(Hears("one"));
    ASSERT_TRUE(RunUntil([] { return g_main_context_pending(nullptr) == 0; }));
    m_voice->Stop();
    m_voice->Stop();
    m_voice->Say("two");
    ASSERT_TRUE(Hears("two"));
    EXPECT_THAT(Heard(), ElementsAre("say one", "CANCEL SELF", "say two"));
}

// Names come from the broadcast.
TEST_F(TheVoice, DoesNotLetATextEndItsMessage) {
    Open();
    m_voice->Say("a\r\n.\r\nQUIT");
    m_voice->Say(".");
    ASSERT_TRUE(Hears("."));
    EXPECT_THAT(Heard(), ElementsAre("say a  .  QUIT", "say ."));
}

TEST_F(TheVoice, LogsOnceThatTheServiceIsMissing) {
    OpenAt("unix_socket:" + (m_folder.path() / "none").string());
    EXPECT_THAT(Failure(), HasSubstr("/none': No such file or directory"));
}

TEST_F(TheVoice, LogsOnceThatTheAddressIsNotAUnixSocket) {
    OpenAt("inet_socket:127.0.0.1:6560");
    EXPECT_THAT(Failure(), HasSubstr("Speech is off"));
}

TEST_F(TheVoice, LogsOnceThatTheServiceHangs) {
    Open(Manner::HANGS);
    m_voice->Say("one");
    EXPECT_THAT(Failure(), HasSubstr("it does not answer"));
    EXPECT_EQ(m_service->Received().size(), 1U);
}

TEST_F(TheVoice, LogsOnceThatTheServiceRefusesAndDoesNotSendTheText) {
    Open(Manner::REFUSES);
    m_voice->Say("QUIT");
    EXPECT_THAT(Failure(), HasSubstr("it replies 300 ERR INTERNAL"));
    EXPECT_EQ(m_service->Received().size(), 3U);
}

TEST_F(TheVoice, LogsOnceThatTheServiceDies) {
    Open(Manner::DIES);
    m_voice->Say("one");
    EXPECT_THAT(Failure(), HasSubstr("it has closed the connection"));
}

TEST_F(TheVoice, LogsOnceThatTheServiceDiesWhileItIsSilent) {
    Open();
    m_voice->Say("one");
    ASSERT_TRUE(Hears("one"));
    m_service.reset();
    EXPECT_THAT(Failure(), HasSubstr("it has closed the connection"));
}

}  // namespace
}  // namespace applist::test
