// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <optional>

#include <gmock/gmock.h>

#include "Number.h"

namespace applist::test {
namespace {

TEST(Number, IsTheWholeText) {
    EXPECT_EQ(ParseNumber("-2147483648"), INT32_MIN);
    EXPECT_EQ(ParseNumber<unsigned>("7"), 7U);
    for (const char* text : {"", "7 ", " 7", "+7", "7a", "--7", "7.0"}) {
        EXPECT_EQ(ParseNumber(text), std::nullopt) << text;
    }
}

TEST(Number, FitsItsType) {
    EXPECT_EQ(ParseNumber("2147483648"), std::nullopt);
    EXPECT_EQ(ParseNumber<unsigned>("-1"), std::nullopt);
    EXPECT_EQ(ParseNumber<std::uint8_t>("256"), std::nullopt);
}

TEST(Number, HasABaseOrAFraction) {
    EXPECT_EQ(ParseNumber<std::uint8_t>("fF", 16), 0xFF);
    EXPECT_EQ(ParseNumber<double>("0.5"), 0.5);
}

}  // namespace
}  // namespace applist::test
