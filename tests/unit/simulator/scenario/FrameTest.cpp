// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <bit>
#include <cstdint>
#include <string>

#include <gmock/gmock.h>

#include "scenario/Statement.h"

namespace applist::sim {
namespace {

using testing::Each;
using testing::SizeIs;

const std::string ADD = "AddItems a{n}=\"{n} of {n}{\"";

/// Returns the bytes of copy number copy of the message that the statement sends.
Bytes BytesOf(const std::string& statement, unsigned copy) {
    const ParsedLine parsed = ParseStatement(statement);
    EXPECT_TRUE(parsed.statement) << statement;
    return std::get<Send>(parsed.statement->action).frame.bytes(copy);
}

TEST(Frames, NumberTheirItemsCopyByCopy) {
    EXPECT_EQ(BytesOf("call " + ADD, 1), EncodeCall(Function::AddItems, {{"a1", "1 of 1{"}}));
    EXPECT_EQ(BytesOf("call " + ADD, 12), EncodeCall(Function::AddItems, {{"a12", "12 of 12{"}}));
}

TEST(Frames, AreSentUnchangedWhenRaw) {
    EXPECT_EQ(BytesOf("send-hex 787b6e7d", 3), (Bytes{'x', '{', 'n', '}'}));
}

TEST(Frames, HaveTheRequestedSizeAndId) {
    const Bytes bytes = BytesOf("send-huge 1000 RemoveItem", 1);
    EXPECT_THAT(bytes, SizeIs(1000));
    EXPECT_THAT(Bytes(bytes.begin(), bytes.end() - 4), Each('\xFF'));
    EXPECT_EQ(Bytes(bytes.end() - 4, bytes.end()), EncodeCall(Function::RemoveItem, {}));
    EXPECT_THAT(BytesOf("send-huge 0", 1), SizeIs(4));
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
        EXPECT_EQ(
            DifferentBits(BytesOf("send-flipped 7 1 " + ADD, copy), BytesOf("call " + ADD, copy)),
            1U);
    }
}

TEST(Frames, HaveTheSameBitsFlippedForTheSameSeed) {
    // The C++ standard defines the first number of std::mt19937 for its default seed, 5489.
    Bytes expected = EncodeCall(Function::GetSelection, {});
    const unsigned bit = 3499211612U % 32;
    expected[bit / 8] =
        static_cast<char>(static_cast<uint8_t>(expected[bit / 8]) ^ (1U << bit % 8));
    EXPECT_EQ(BytesOf("send-flipped 5489 1 GetSelection", 1), expected);
    EXPECT_EQ(BytesOf("send-flipped 5480 1 GetSelection", 10), expected);
}

TEST(Frames, LoseTheEndOfTheirPayloadButNotTheirId) {
    const Bytes whole = EncodeCall(Function::AddItems, {{"a", "A"}});
    const Bytes cut = BytesOf("send-cut 3 AddItems a=A", 1);
    ASSERT_THAT(cut, SizeIs(3 + 4));
    EXPECT_TRUE(std::equal(cut.begin(), cut.begin() + 3, whole.begin()));
    EXPECT_TRUE(std::equal(cut.begin() + 3, cut.end(), whole.end() - 4));
    EXPECT_EQ(BytesOf("send-cut 0 AddItems a=A", 1), EncodeCall(Function::AddItems, {}));
    EXPECT_EQ(BytesOf("send-cut 9999 AddItems a=A", 1), whole);
}

}  // namespace
}  // namespace applist::sim
