// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <vector>

#include <gmock/gmock.h>

#include "broadcast/ByteReader.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<uint8_t> BYTES{0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08};

TEST(ByteReader, ReadsNumbersMostSignificantByteFirst) {
    ByteReader reader(BYTES);
    EXPECT_EQ(reader.U8(), 0x01);
    EXPECT_EQ(reader.U16(), 0x0203);
    EXPECT_EQ(reader.U32(), 0x04050607U);
    EXPECT_EQ(reader.left(), 1U);
    EXPECT_FALSE(reader.failed());
}

TEST(ByteReader, ReadsToTheVeryEndWithoutFailing) {
    ByteReader reader(BYTES);
    EXPECT_EQ(reader.Take(BYTES.size()).size(), BYTES.size());
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_FALSE(reader.failed());
}

TEST(ByteReader, GivesZeroForATruncatedNumber) {
    for (size_t size = 0; size < 4; ++size) {
        ByteReader reader(ByteSpan(BYTES).first(size));
        EXPECT_EQ(reader.U32(), 0U);
        EXPECT_TRUE(reader.failed());
    }
}

TEST(ByteReader, GivesNoMoreDataAfterAFailure) {
    ByteReader reader(BYTES);
    EXPECT_THAT(reader.Take(BYTES.size() + 1), IsEmpty());
    EXPECT_EQ(reader.U8(), 0);
    EXPECT_EQ(reader.left(), 0U);
    EXPECT_TRUE(reader.failed());
}

TEST(ByteReader, TakesALoopByItsTwelveBitLength) {
    const std::vector<uint8_t> bytes{0xF0, 0x02, 0xAA, 0xBB, 0xCC};
    ByteReader reader(bytes);
    EXPECT_THAT(reader.TakeLoop(), ElementsAre(0xAA, 0xBB));
    EXPECT_EQ(reader.left(), 1U);
}

TEST(ByteReader, FailsOnALoopLongerThanTheBytes) {
    const std::vector<uint8_t> bytes{0xFF, 0xFF, 0xAA};
    ByteReader reader(bytes);
    EXPECT_THAT(reader.TakeLoop(), IsEmpty());
    EXPECT_TRUE(reader.failed());
}

}  // namespace
}  // namespace applist::sim
