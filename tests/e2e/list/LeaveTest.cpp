// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list between the viewer's choice and its own end.
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/Television.h"

namespace applist::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::EndsWith;

class LeavingTheScreen : public testing::Test {
protected:
    /// All keys are queued before the list handles the first one.
    void TypeAtOnce(const std::vector<std::string>& keys) {
        m_set.application().Signal(SIGSTOP);
        for (const std::string& key : keys) {
            m_set.screen().TypeKey(key);
        }
        m_set.application().Signal(SIGCONT);
    }
    bool WindowGoes() { return m_set.WaitForNoWindow(Television::LIST); }

    Television m_set;
};

TEST_F(LeavingTheScreen, LetsAMiddlewareThatWasHeldUpReadTheChoice) {
    ASSERT_NO_FATAL_FAILURE(m_set.ShowThreeItems());
    m_set.middleware().process().Signal(SIGSTOP);
    TypeAtOnce({"Down", "Return"});
    EXPECT_TRUE(WindowGoes());
    m_set.middleware().process().Signal(SIGCONT);
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo")) << m_set.middleware().Transcript();
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(m_set.middleware().Sees("disconnected"));
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

TEST_F(LeavingTheScreen, IgnoresKeysAfterTheChoice) {
    ASSERT_NO_FATAL_FAILURE(m_set.ShowThreeItems());
    TypeAtOnce({"Down", "Return", "Down", "Return", "Right", "Left"});
    EXPECT_TRUE(m_set.middleware().SeesSelected("b", "Bravo")) << m_set.middleware().Transcript();
    EXPECT_TRUE(m_set.middleware().Sees("event 3 ItemClicked"));
    EXPECT_TRUE(m_set.middleware().Sees("disconnected"));
    const std::string& transcript = m_set.middleware().Transcript();
    const size_t chosen = transcript.find("event 3 ItemClicked");
    EXPECT_EQ(transcript.find("event ", chosen + 1), std::string::npos) << transcript;
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

// The first list is stopped as soon as its window is gone, so by then it must have left the session
// bus.
TEST_F(LeavingTheScreen, MakesPlaceForANewList) {
    ASSERT_NO_FATAL_FAILURE(m_set.ShowThreeItems());
    m_set.screen().TypeKey("Escape");
    ASSERT_TRUE(WindowGoes());
    m_set.application().Signal(SIGSTOP);
    const auto next = m_set.StartApplication();
    EXPECT_TRUE(m_set.WaitForFocusedRow()) << next->Errors();
    m_set.application().Signal(SIGCONT);
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
    EXPECT_TRUE(m_set.WaitForFocusedRow());
    m_set.screen().TypeKey("Escape");
    EXPECT_EQ(next->WaitForExit(), 0) << next->Errors();
}

// The list's clock runs slower, so that the time limit for holding a key cannot pass on a busy
// machine.
TEST_F(LeavingTheScreen, KeepsBothHalvesOfTheKeyThatChose) {
    const XlibWindow player = m_set.screen().OpenFullScreen(0x2040A0);
    ASSERT_NE(player, 0U);
    m_set.Show("a\tAlpha\n", ClockAtSpeed("0.05"));
    ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    m_set.screen().PressKey("Return");
    ASSERT_TRUE(m_set.screen().WaitUntil([&] { return m_set.screen().FocusedWindow() == player; }));
    m_set.screen().ReleaseKey("Return");
    // The list releases the keyboard once it has handled the key release.
    EXPECT_TRUE(m_set.screen().WaitUntil([&] {
        m_set.screen().TypeKey("x");
        return !m_set.screen().ReceivedKeys().empty();
    }));
    EXPECT_THAT(m_set.screen().ReceivedKeys(), Each(EndsWith(" x")));
}

// The list sees the release only when the next key has been pressed and released as well.
TEST_F(LeavingTheScreen, LeavesTheNextKeyToTheNextWindow) {
    const XlibWindow player = m_set.screen().OpenFullScreen(0x2040A0);
    ASSERT_NE(player, 0U);
    m_set.Show("a\tAlpha\n", ClockAtSpeed("0.05"));
    ASSERT_TRUE(m_set.middleware().SeesSelected("a", "Alpha"));
    ASSERT_TRUE(m_set.WaitForFocusedRow());
    m_set.screen().PressKey("Return");
    ASSERT_TRUE(m_set.screen().WaitUntil([&] { return m_set.screen().FocusedWindow() == player; }));
    m_set.application().Signal(SIGSTOP);
    m_set.screen().ReleaseKey("Return");
    m_set.screen().TypeKey("x");
    m_set.application().Signal(SIGCONT);
    EXPECT_TRUE(
        m_set.screen().WaitUntil([&] { return m_set.screen().ReceivedKeys().size() >= 2; }));
    EXPECT_THAT(m_set.screen().ReceivedKeys(), ElementsAre("press x", "release x"));
}

// For a key that acts on its release the list does not hold the keyboard.
TEST_F(LeavingTheScreen, GivesTheKeyboardBackAtOnceWhenNoKeyIsDown) {
    const XlibWindow player = m_set.screen().OpenFullScreen(0x2040A0);
    ASSERT_NE(player, 0U);
    ASSERT_NO_FATAL_FAILURE(m_set.ShowThreeItems());
    m_set.screen().TypeKey("Escape");
    ASSERT_TRUE(m_set.screen().WaitUntil([&] { return m_set.screen().FocusedWindow() == player; }));
    m_set.application().Signal(SIGSTOP);
    m_set.screen().TypeKey("x");
    EXPECT_TRUE(
        m_set.screen().WaitUntil([&] { return m_set.screen().ReceivedKeys().size() >= 2; }));
    EXPECT_THAT(m_set.screen().ReceivedKeys(), ElementsAre("press x", "release x"));
    m_set.application().Signal(SIGCONT);
    EXPECT_EQ(m_set.application().WaitForExit(), 0);
}

// The list's clock runs at a hundredth of the speed, so that a wait would take a minute.
class LeavingSlowly : public LeavingTheScreen {
protected:
    void SetUp() override {
        m_application = m_set.StartApplication(ClockAtSpeed("0.01"));
        ASSERT_TRUE(m_set.WaitForWindow()) << m_application->Errors();
    }

    std::unique_ptr<ChildProcess> m_application;
};

TEST_F(LeavingSlowly, IsNotWhatASignalDoes) {
    m_application->Signal(SIGTERM);
    EXPECT_EQ(m_application->WaitForExit(), 0);
}

TEST_F(LeavingSlowly, IsEndedByASignal) {
    m_set.screen().TypeKey("Escape");
    ASSERT_TRUE(WindowGoes());
    m_application->Signal(SIGTERM);
    EXPECT_EQ(m_application->WaitForExit(), 0);
}

}  // namespace
}  // namespace applist::test
