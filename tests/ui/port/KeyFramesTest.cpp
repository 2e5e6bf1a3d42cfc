// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "SampleProcess.h"
#include "support/XDisplay.h"

namespace applist::test {
namespace {

constexpr uint32_t BAR = 0xFFD140;  // of the theme, in the focused row

TEST(AKeysFrame, IsDrawnWithoutWaitingForATick) {
    XDisplay display({"openbox", ""});
    SampleProcess sample({"--no-ticks"}, display.Environment());
    ASSERT_TRUE(display.WaitUntil([&] { return display.Shows(BAR); }))
        << sample.Output() << sample.Errors();
    for (const char* row : {"focused 2", "focused 3"}) {
        const Picture before = display.Grab();
        display.TypeKey("Down");
        ASSERT_TRUE(sample.WaitForLines(row, 1));
        EXPECT_TRUE(display.WaitUntil([&] { return display.Grab() != before; })) << row;
    }
}

}  // namespace
}  // namespace applist::test
