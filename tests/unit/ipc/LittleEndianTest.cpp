// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "LittleEndian.h"

using testing::ElementsAre;

namespace applist::test {
namespace {

char Byte(unsigned value) {
    return static_cast<char>(value);
}

TEST(LittleEndian, PutsTheLeastSignificantByteFirst) {
    EXPECT_THAT(ToLittleEndian(0x12345678U),
                ElementsAre(Byte(0x78), Byte(0x56), Byte(0x34), Byte(0x12)));
    EXPECT_THAT(ToLittleEndian(2000), ElementsAre(Byte(0xD0), Byte(0x07), 0, 0));
}

TEST(LittleEndian, ReadsBackWhatItWrote) {
    for (const std::uint32_t value : {0U, 1U, 0x7FU, 0x80U, 0xFFU, 0x100U, 0x80000000U, ~0U}) {
        EXPECT_EQ(FromLittleEndian(ToLittleEndian(value)), value);
    }
}

TEST(LittleEndian, TakesHighBytesForUnsigned) {
    const std::array<char, 4> bytes = {Byte(0xFF), Byte(0x80), 0, Byte(0xFF)};
    EXPECT_EQ(FromLittleEndian(bytes), 0xFF0080FFU);
}

}  // namespace
}  // namespace applist::test
