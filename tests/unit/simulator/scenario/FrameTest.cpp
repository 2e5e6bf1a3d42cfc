// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <bit>
#include <cstdint>
#include <string>

#include <gmock/gmock.h>

#include "scenario/Frame.h"

namespace applist::sim {
namespace {

using testing::Each;
using testing::SizeIs;

const RegularFrame ADD{Function::AddItems, {{"a{n}", "{n} of {n}{"}}};

TEST(Frames, NumberTheirItemsCopyByCopy) {
    EXPECT_EQ(BytesOf(ADD, 1), EncodeCall(Function::AddItems, {{"a1", "1 of 1{"}}));
    EXPECT_EQ(BytesOf(ADD, 12), EncodeCall(Function::AddItems, {{"a12", "12 of 12{"}}));
}

TEST(Frames, AreSentUnchangedWhenRaw) {
    EXPECT_EQ(BytesOf(RawFrame{{'x', '{', 'n', '}'}}, 3), (Bytes{'x', '{', 'n', '}'}));
}

TEST(Frames, HaveTheRequestedSizeAndId) {
    const Bytes bytes = BytesOf(HugeFrame{1000, Function::RemoveItem}, 1);
    EXPECT_THAT(bytes, SizeIs(1000));
    EXPECT_THAT(Bytes(bytes.begin(), bytes.end() - 4), Each('\xFF'));
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), EncodeCall(Function::RemoveItem, {}));
    EXPECT_THAT(BytesOf(HugeFrame{0, Function::AddItems}, 1), SizeIs(4));
}

unsigned DifferentBits(const Bytes& left, const Bytes& right) {
    EXPECT_EQ(left.size(), right.size());
    unsigned bits = 0;
    for (size_t i = 0; i < left.size(); ++i) {
        bits += static_cast<unsigned>(std::popcount(static_cast<uint8_t>(
            static_cast<uint8_t>(left[i]) ^ static_cast<uint8_t>(right.at(i)))));
    }
    return bits;
}

TEST(Frames, DifferByOneBitWhenOneIsFlipped) {
    for (unsigned copy = 1; copy <= 100; ++copy) {
        EXPECT_EQ(DifferentBits(BytesOf(FlippedFrame{ADD, 7, 1}, copy), BytesOf(ADD, copy)), 1U);
    }
}

TEST(Frames, HaveTheSameBitsFlippedForTheSameSeed) {
    const RegularFrame call{Function::GetSelection, {}};
    // The C++ standard defines the first number of std::mt19937 for its default seed, 5489.
    Bytes expected = BytesOf(call, 1);
    const unsigned bit = 3499211612U % 32;
    expected[bit / 8] =
        static_cast<char>(static_cast<uint8_t>(expected[bit / 8]) ^ (1U << bit % 8));
    EXPECT_EQ(BytesOf(FlippedFrame{call, 5489, 1}, 1), expected);
    EXPECT_EQ(BytesOf(FlippedFrame{call, 5480, 1}, 10), expected);
}

TEST(Frames, LoseTheEndOfTheirPayloadButNotTheirId) {
    const RegularFrame call{Function::AddItems, {{"a", "A"}}};
    Bytes expected = BytesOf(call, 1);
    expected.erase(expected.begin() + 3, expected.end() - 4);
    EXPECT_EQ(BytesOf(CutFrame{call, 3}, 1), expected);
    EXPECT_EQ(BytesOf(CutFrame{call, 0}, 1), EncodeCall(Function::AddItems, {}));
    EXPECT_EQ(BytesOf(CutFrame{call, 9999}, 1), BytesOf(call, 1));
}

}  // namespace
}  // namespace applist::sim
