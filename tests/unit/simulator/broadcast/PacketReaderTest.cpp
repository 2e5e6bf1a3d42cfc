// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "broadcast/PacketReader.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using Bytes = std::vector<uint8_t>;

/// Packets whose PIDs count from 1.
Bytes Packets(size_t count) {
    Bytes stream;
    for (size_t i = 1; i <= count; ++i) {
        const size_t start = stream.size();
        stream.resize(start + PACKET_SIZE);
        stream[start] = 0x47;
        stream[start + 2] = static_cast<uint8_t>(i);
    }
    return stream;
}

Bytes Changed(Bytes stream, size_t position, uint8_t value) {
    stream.at(position) = value;
    return stream;
}

Bytes Without(Bytes stream, size_t position, size_t count) {
    const auto first = stream.begin() + static_cast<std::ptrdiff_t>(position);
    stream.erase(first, first + static_cast<std::ptrdiff_t>(count));
    return stream;
}

Bytes Joined(Bytes one, const Bytes& other) {
    one.insert(one.end(), other.begin(), other.end());
    return one;
}

/// Packets with 4 bytes of time stamps, or 16 of error correction.
Bytes Stamped(const Bytes& stream) {
    return test::TsRepacked(stream, 4, 0);
}
Bytes Corrected(const Bytes& stream) {
    return test::TsRepacked(stream, 0, 16);
}

/// The size of the packets with the bytes around them, how many of those are before the first sync
/// byte, the PIDs and the number of damaged places: "188+0: 1 2 3, 1 damaged".
std::string Read(const Bytes& stream) {
    Damage damage;
    std::string pids;
    PacketReader reader(
        [&](ByteSpan packet) {
            EXPECT_EQ(packet.size(), PACKET_SIZE);
            pids += ' ' + std::to_string(PacketPid(packet));
        },
        damage);
    EXPECT_EQ(reader.Read(stream, true), stream.size());
    const PacketFormat format = reader.format().value_or(PacketFormat{});
    EXPECT_EQ(damage.packets(), damage.lostSync + damage.markedPackets);
    return std::to_string(format.stride) + "+" + std::to_string(format.prefix) + ":" + pids + ", " +
           std::to_string(damage.packets()) + " damaged";
}

TEST(PacketReader, FindsEveryPacketOfAWholeStream) {
    EXPECT_EQ(Read(Packets(4)), "188+0: 1 2 3 4, 0 damaged");
    EXPECT_EQ(Read(Packets(1)), "188+0: 1, 0 damaged");
    EXPECT_EQ(Read({}), "188+0:, 0 damaged");
}

TEST(PacketReader, ReadsThirteenBitsOfPid) {
    EXPECT_EQ(Read(Changed(Changed(Packets(1), 1, 0x5E), 2, 0xC5)), "188+0: 7877, 0 damaged");
}

TEST(PacketReader, FindsPacketsWithBytesAroundThem) {
    EXPECT_EQ(Read(Stamped(Packets(4))), "192+4: 1 2 3 4, 0 damaged");
    EXPECT_EQ(Read(Corrected(Packets(4))), "204+0: 1 2 3 4, 0 damaged");
    // The bytes around the last packet may be missing.
    EXPECT_EQ(Read(Without(Corrected(Packets(4)), 3 * 204 + 188, 16)), "204+0: 1 2 3 4, 0 damaged");
}

TEST(PacketReader, SkipsBytesBeforeTheFirstPacket) {
    EXPECT_EQ(Read(Joined({0x00, 0x47, 0x00}, Packets(4))), "188+0: 1 2 3 4, 1 damaged");
    EXPECT_EQ(Read(Without(Packets(5), 0, 100)), "188+0: 2 3 4 5, 1 damaged");
    EXPECT_EQ(Read(Without(Stamped(Packets(5)), 0, 100)), "192+0: 2 3 4 5, 1 damaged");
    EXPECT_EQ(Read(Without(Corrected(Packets(5)), 0, 100)), "204+0: 2 3 4 5, 1 damaged");
    EXPECT_EQ(Read(Joined(Bytes(3000, 0x00), Corrected(Packets(4)))), "204+0: 1 2 3 4, 1 damaged");
}

TEST(PacketReader, SkipsAPacketWithoutItsSyncByte) {
    const Bytes stream = Changed(Packets(5), PACKET_SIZE, 0x00);
    EXPECT_EQ(Read(stream), "188+0: 1 3 4 5, 1 damaged");
    // A sync byte in the data of the packet does not start another one.
    EXPECT_EQ(Read(Changed(stream, PACKET_SIZE + 10, 0x47)), "188+0: 1 3 4 5, 1 damaged");
}

TEST(PacketReader, SynchronisesAgainAfterLostBytes) {
    EXPECT_EQ(Read(Without(Packets(6), PACKET_SIZE + 50, 7)), "188+0: 1 2 4 5 6, 1 damaged");
    EXPECT_EQ(Read(Without(Stamped(Packets(6)), 300, 10)), "192+4: 1 2 4 5 6, 1 damaged");
    EXPECT_EQ(Read(Without(Corrected(Packets(6)), 300, 10)), "204+0: 1 2 4 5 6, 1 damaged");
}

TEST(PacketReader, LeavesOutPacketsThatTheReceiverMarkedAsBroken) {
    EXPECT_EQ(Read(Changed(Packets(3), PACKET_SIZE + 1, 0x80)), "188+0: 1 3, 1 damaged");
}

TEST(PacketReader, CountsATruncatedLastPacket) {
    EXPECT_EQ(Read(Without(Packets(3), 3 * PACKET_SIZE - 1, 1)), "188+0: 1 2, 1 damaged");
    EXPECT_EQ(Read(Bytes(PACKET_SIZE - 1, 0x47)), "188+0:, 1 damaged");
}

TEST(PacketReader, EndsOnBytesWithoutAStream) {
    EXPECT_EQ(Read(Bytes(10 * PACKET_SIZE, 0x11)), "188+0:, 1 damaged");
}

TEST(PacketFormat, Is188BytesByDefault) {
    EXPECT_EQ(DetectPacketFormat({}), PacketFormat{});
    EXPECT_EQ(DetectPacketFormat(Bytes(5000, 0x47)), PacketFormat{});
    EXPECT_EQ(DetectPacketFormat(Bytes(5000, 0x00)), PacketFormat{});
}

}  // namespace
}  // namespace applist::sim
