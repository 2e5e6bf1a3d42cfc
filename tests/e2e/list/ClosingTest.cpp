// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list that closes itself because the viewer does not use it, and the note before that.
#include <memory>

#include <gtest/gtest.h>

#include "support/DrivenMiddleware.h"
#include "support/SteppedClock.h"

namespace applist::test {
namespace {

// The letters of the note.
constexpr uint32_t NOTE_COLOUR = 0xFFB040;

// The list's clock runs slowly, so that a busy machine does not spend the margins of the times.
class AnUnusedList : public testing::Test {
protected:
    void SetUp() override {
        // A step of the clock during an animation confuses the toolkit's timers.
        ASSERT_EQ(m_set.Configure({"set", "db/menu/accessibility/reduced-motion", "bool", "true"}),
                  0);
        m_application = m_set.StartApplication(m_clock.Wrapper("0.2"));
        ASSERT_TRUE(m_middleware.AwaitApplication());
        ASSERT_TRUE(m_middleware.Ask(sim::Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    /// Lets time pass. The calls wake the list, which handles its timers before the second one.
    void Pass(int seconds) {
        m_clock.Pass(seconds);
        for (int call = 0; call < 2; ++call) {
            ASSERT_TRUE(m_middleware.Ask(sim::Function::GetAllItems));
        }
    }
    bool ShowsNote() { return m_set.screen().Shows(NOTE_COLOUR); }
    bool WaitForNote(bool shown) {
        return m_set.screen().WaitUntil([&] { return ShowsNote() == shown; });
    }

    // Without a compositor, because picom sometimes misses a change on a busy machine.
    Television m_set{{}, {"openbox", ""}};
    SteppedClock m_clock{m_set};
    DrivenMiddleware m_middleware{m_set.systemBus().Address()};
    std::unique_ptr<ChildProcess> m_application;
};

TEST_F(AnUnusedList, ShowsANoteTwentySecondsBeforeItCloses) {
    Pass(43);
    EXPECT_FALSE(ShowsNote());
    Pass(4);
    EXPECT_TRUE(WaitForNote(true));
    Pass(16);
    EXPECT_TRUE(WaitForNote(true));
    m_clock.Pass(4);
    m_set.screen().MovePointer(5, 5);
    EXPECT_TRUE(m_set.WaitForNoWindow(Television::LIST));
    EXPECT_EQ(m_application->WaitForExit(), 0) << m_application->Errors();
}

}  // namespace
}  // namespace applist::test
