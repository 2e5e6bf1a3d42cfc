// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The list that closes itself because the viewer does not use it, and the note before that.
#include <memory>

#include <gtest/gtest.h>

#include "support/DrivenMiddleware.h"
#include "support/Television.h"

namespace applist::test {
namespace {

// The letters of the note.
constexpr uint32_t NOTE_COLOUR = 0xFFB040;

// The list's clock runs five times as fast. Steps of the clock would be faster, but a step during
// an animation confuses the toolkit's timers.
class AnUnusedList : public testing::Test {
protected:
    void SetUp() override {
        m_application = m_set.StartApplication(ClockAtSpeed("5"));
        ASSERT_TRUE(m_middleware.AwaitApplication());
        ASSERT_TRUE(m_middleware.Ask(sim::Function::AddItems, {{"a", "Alpha"}, {"b", "Bravo"}}));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    bool WaitForNote() {
        return m_set.screen().WaitUntil([&] { return m_set.screen().Shows(NOTE_COLOUR); });
    }

    // Without a compositor, because picom sometimes misses a change on a busy machine.
    Television m_set{{}, {"openbox", ""}};
    DrivenMiddleware m_middleware{m_set.systemBus().Address()};
    std::unique_ptr<ChildProcess> m_application;
};

TEST_F(AnUnusedList, ShowsANoteBeforeItCloses) {
    EXPECT_TRUE(WaitForNote());
    EXPECT_TRUE(m_set.WaitForNoWindow(Television::LIST));
    EXPECT_EQ(m_application->WaitForExit(), 0) << m_application->Errors();
}

}  // namespace
}  // namespace applist::test
