// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <fstream>
#include <string>
#include <utility>

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
    // Down acts on the key press, Right on the release.
    for (const auto& [key, row] :
         {std::pair("Down", "focused 2"), std::pair("Right", "focused 3")}) {
        const Picture before = display.Grab();
        display.TypeKey(key);
        ASSERT_TRUE(sample.WaitForLines(row, 1));
        EXPECT_TRUE(display.WaitUntil([&] { return display.Grab() != before; })) << row;
    }
}

// Shared memory segments would remain in the kernel after the program is killed.
TEST(AFrame, TakesNoSharedMemoryWithTheDisplay) {
    XDisplay display({"openbox", ""});
    SampleProcess sample({}, display.Environment());
    ASSERT_TRUE(display.WaitUntil([&] { return display.Shows(BAR); }))
        << sample.Output() << sample.Errors();
    std::ifstream maps("/proc/" + std::to_string(sample.Process().pid()) + "/maps");
    const std::string mapped(std::istreambuf_iterator<char>(maps), {});
    EXPECT_NE(mapped.find("libXext"), std::string::npos);
    EXPECT_EQ(mapped.find("SYSV"), std::string::npos) << mapped;
}

}  // namespace
}  // namespace applist::test
