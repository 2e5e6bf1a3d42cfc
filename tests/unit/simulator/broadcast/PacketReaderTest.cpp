// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <vector>

#include <gtest/gtest.h>

#include "broadcast/PacketReader.h"

namespace applist::sim {
namespace {

using Stream = std::vector<uint8_t>;

// Packets whose PIDs count from 1.
Stream MakeStream(size_t packets) {
    Stream stream;
    for (size_t i = 1; i <= packets; ++i) {
        const size_t start = stream.size();
        stream.resize(start + PACKET_SIZE);
        stream[start] = 0x47;
        stream[start + 2] = static_cast<uint8_t>(i);
    }
    return stream;
}

struct Reading {
    std::vector<uint16_t> pids;
    size_t damaged = 0;
};

Reading Read(const Stream& stream) {
    Damage damage;
    Reading reading;
    PacketReader reader(
        [&](ByteSpan packet) {
            EXPECT_EQ(packet.size(), PACKET_SIZE);
            reading.pids.push_back(PacketPid(packet));
        },
        damage);
    EXPECT_EQ(reader.Read(stream, true), stream.size());
    reading.damaged = damage.packets();
    return reading;
}

using Pids = std::vector<uint16_t>;

TEST(PacketReader, FindsEveryPacketOfAWholeStream) {
    const Reading reading = Read(MakeStream(4));
    EXPECT_EQ(reading.pids, (Pids{1, 2, 3, 4}));
    EXPECT_EQ(reading.damaged, 0U);
}

TEST(PacketReader, FindsTheOnlyPacket) {
    const Reading reading = Read(MakeStream(1));
    EXPECT_EQ(reading.pids, Pids{1});
    EXPECT_EQ(reading.damaged, 0U);
}

TEST(PacketReader, FindsNothingInAnEmptyStream) {
    const Reading reading = Read({});
    EXPECT_TRUE(reading.pids.empty());
    EXPECT_EQ(reading.damaged, 0U);
}

TEST(PacketReader, ReadsThirteenBitsOfPid) {
    Stream stream = MakeStream(1);
    stream[1] = 0x5E;
    stream[2] = 0xC5;
    EXPECT_EQ(Read(stream).pids, Pids{0x1EC5});
}

TEST(PacketReader, SkipsBytesBeforeTheFirstPacket) {
    Stream stream = MakeStream(4);
    stream.insert(stream.begin(), {0x00, 0x47, 0x00});
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.pids, (Pids{1, 2, 3, 4}));
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, SkipsAPacketWithoutItsSyncByte) {
    Stream stream = MakeStream(5);
    stream[PACKET_SIZE] = 0x00;
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.pids, (Pids{1, 3, 4, 5}));
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, IsNotMisledBySyncBytesInTheData) {
    Stream stream = MakeStream(5);
    stream[PACKET_SIZE] = 0x00;
    stream[PACKET_SIZE + 10] = 0x47;
    EXPECT_EQ(Read(stream).pids, (Pids{1, 3, 4, 5}));
}

TEST(PacketReader, SynchronisesAgainAfterLostBytes) {
    Stream stream = MakeStream(6);
    const auto first = stream.begin() + static_cast<std::ptrdiff_t>(PACKET_SIZE + 50);
    stream.erase(first, first + 7);
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.pids, (Pids{1, 2, 4, 5, 6}));
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, LeavesOutPacketsThatTheReceiverMarkedAsBroken) {
    Stream stream = MakeStream(3);
    stream[PACKET_SIZE + 1] = 0x80;
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.pids, (Pids{1, 3}));
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, CountsATruncatedLastPacket) {
    Stream stream = MakeStream(3);
    stream.pop_back();
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.pids, (Pids{1, 2}));
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, EndsOnBytesWithoutAStream) {
    const Reading reading = Read(Stream(10 * PACKET_SIZE, 0x11));
    EXPECT_TRUE(reading.pids.empty());
    EXPECT_EQ(reading.damaged, 1U);
}

TEST(PacketReader, EndsOnAStreamOfSyncBytes) {
    EXPECT_EQ(Read(Stream(10 * PACKET_SIZE, 0x47)).pids.size(), 10U);
    EXPECT_EQ(Read(Stream(PACKET_SIZE - 1, 0x47)).damaged, 1U);
}

}  // namespace
}  // namespace applist::sim
