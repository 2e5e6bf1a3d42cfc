// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <csignal>

#include <gmock/gmock.h>

#include "bus/simulator/Simulation.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

/// A recording of a middleware that fills a fresh list and reads it.
class Replay : public testing::Test {
protected:
    void SetUp() override {
        const auto list = m_set.StartList();
        const auto serve = m_set.Start(
            {"serve", "--items", m_set.File("items", "w1\tWeather\n"), "--record", m_recording});
        ASSERT_TRUE(serve->WaitForText("event 2 ItemSelected selection w1\tWeather\n"));
        ASSERT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    }

    // Replaces a text in the recording, which must contain it.
    std::string Changed(const std::string& from, const std::string& to) {
        std::string text = Simulation::ContentOf(m_recording);
        const size_t place = text.find(from);
        EXPECT_NE(place, std::string::npos) << from;
        return m_set.File("changed.jsonl", text.replace(place, from.size(), to));
    }

    Simulation m_set;
    const std::string m_recording = m_set.Path("session.jsonl");
};

TEST_F(Replay, FindsNoDifferenceInAFreshApplicationAtAnySpeed) {
    for (const char* speed : {"1", "max", "0.5", "1000"}) {
        const auto list = m_set.StartList();
        EXPECT_EQ(m_set.Run({"replay", m_recording, "--speed", speed}), SUCCESS)
            << m_set.output() << m_set.errors();
        EXPECT_EQ(m_set.output(), "no difference after 5 messages\n");
        EXPECT_EQ(m_set.errors(), "");
    }
}

TEST_F(Replay, WaitsForTheApplication) {
    const auto replay = m_set.Start({"replay", m_recording});
    const auto list = m_set.StartList();
    EXPECT_EQ(replay->WaitForExit(), SUCCESS) << replay->Output();
}

TEST_F(Replay, PrintsDifferentMessagesOfTheApplication) {
    const auto list = m_set.StartList();
    ASSERT_EQ(m_set.Run({"call", "AddItems", "n1=News"}), SUCCESS);
    EXPECT_EQ(m_set.Run({"replay", m_recording}), FAILED);
    EXPECT_THAT(m_set.output(), StartsWith("- " + m_recording + ":"));
    EXPECT_THAT(m_set.output(), HasSubstr(": middleware call GetSelection -> reply (no item)\n"));
    EXPECT_THAT(m_set.output(),
                HasSubstr("+ this time: middleware call GetSelection -> reply n1=News\n"));
    EXPECT_THAT(m_set.output(), EndsWith(" differences\n"));
    EXPECT_EQ(m_set.errors(), "");
}

TEST_F(Replay, PrintsAMissingEvent) {
    const std::string file =
        Changed("\"bytes\":\"01000000\",\"note\":\"event 1", "\"bytes\":\"03000000\",\"note\":\"");
    {
        const auto list = m_set.StartList();
        EXPECT_EQ(m_set.Run({"replay", "--speed=max", file}), FAILED);
        EXPECT_THAT(m_set.output(),
                    HasSubstr(": application signal event 3 ItemClicked\n"
                              "+ this time: application signal event 1 ItemChanged\n"
                              "2 differences\n"));
    }
    const auto list = m_set.StartList();
    EXPECT_EQ(m_set.Run({"replay", "--speed=max", "--json", file}), FAILED);
    EXPECT_THAT(m_set.output(), StartsWith("{\"type\":\"difference\",\"number\":1,"));
    EXPECT_THAT(m_set.output(), HasSubstr("\"note\":\"application signal event 3 ItemClicked\""));
}

TEST_F(Replay, TimesOutWaitingForActionsOfTheViewer) {
    const auto first = m_set.StartList();
    const auto serve = m_set.Start(
        {"serve", "--items", m_set.File("items", "a\tA\nb\tB\n"), "--record", m_recording});
    ASSERT_TRUE(serve->WaitForText("event 2 ItemSelected selection a\tA\n"));
    first->Type("right");
    ASSERT_TRUE(serve->WaitForText("event 2 ItemSelected selection b\tB\n"));
    ASSERT_EQ(Simulation::Interrupt(*serve), SUCCESS);
    first->Signal(SIGTERM);
    first->WaitForExit();
    const auto list = m_set.StartList();
    EXPECT_EQ(m_set.Run({"replay", "--speed=max", "--wait=0", m_recording}), FAILED);
    EXPECT_THAT(m_set.output(), HasSubstr(": application signal event 2 ItemSelected\n"));
}

TEST_F(Replay, ReportsAnApplicationThatEndsEarly) {
    const auto list = m_set.StartList();
    const auto witness = m_set.Start({"record", "-"});
    ASSERT_TRUE(witness->WaitForText("javamw-recording"));
    const auto replay = m_set.Start({"replay", "--speed=0.000001", m_recording});
    ASSERT_TRUE(witness->WaitForText("event 4 LocalCreated"));
    list->Signal(SIGKILL);
    EXPECT_EQ(replay->WaitForExit(), FAILED);
    EXPECT_THAT(replay->Output(), EndsWith(" differences\n"));
}

TEST_F(Replay, RefusesFilesThatItCannotReplay) {
    EXPECT_EQ(m_set.Run({"replay", m_set.Path("none")}), WRONG_USAGE);
    EXPECT_EQ(m_set.errors(), "javamw-sim: " + m_set.Path("none") + ": no such file\n");
    EXPECT_EQ(m_set.Run({"replay", "--conversation=2", m_recording}), WRONG_USAGE);
    EXPECT_EQ(m_set.errors(),
              "javamw-sim: " + m_recording + ": has 1 conversations; number 2 does not exist\n");
    const std::string empty = m_set.File("empty", "{\"javamw-recording\":1}\n");
    EXPECT_EQ(m_set.Run({"replay", empty}), WRONG_USAGE);
    EXPECT_EQ(m_set.errors(),
              "javamw-sim: " + empty + ": has 0 conversations; number 1 does not exist\n");
}

TEST_F(Replay, EndsWithoutAnApplication) {
    EXPECT_EQ(m_set.Run({"replay", "--timeout=0", m_recording}), NO_APPLICATION);
}

}  // namespace
}  // namespace applist::test
