// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "broadcast/PacketReader.h"
#include "feed/BroadcastFilter.h"
#include "support/ScannedBroadcast.h"
#include "support/TsGenerator.h"

namespace applist::sim {
namespace {

using test::ScanBroadcast;
using test::TsBytes;
using test::TsRepacked;

TsBytes Stream() {
    test::TsGenerator generator;
    for (int i = 0; i < 3; ++i) {
        generator.Add(0, test::TsAssociation({{1, 0x0200}}));
        generator.Add(0x0200, test::TsMap(1, {0x0300}));
        generator.Add(0x0300, test::TsApplications({{11, 1, 2, 3, {{"ita", "Notizie"}}}}));
    }
    return generator.stream();
}

struct Reading {
    size_t packets = 0;
    Damage damage;
    PacketFormat format;
};

Reading Read(const TsBytes& stream) {
    Reading reading;
    PacketReader reader([&](ByteSpan) { ++reading.packets; }, reading.damage);
    EXPECT_EQ(reader.Read(stream, true), stream.size());
    reading.format = reader.format().value();
    return reading;
}

const Items NEWS{{"0000000b.0001", "Notizie"}};

Items Offered(const TsBytes& stream) {
    return OfferedItems(ScanBroadcast(stream).snapshots.back(), {});
}

TEST(PacketFormat, TakesPacketsOf188Bytes) {
    const Reading reading = Read(Stream());
    EXPECT_EQ(reading.format, (PacketFormat{188, 0}));
    EXPECT_EQ(reading.packets, 9U);
    EXPECT_EQ(reading.damage.packets(), 0U);
    EXPECT_EQ(Offered(Stream()), NEWS);
}

TEST(PacketFormat, TakesPacketsOf192BytesWithTimeStamps) {
    const TsBytes stream = TsRepacked(Stream(), 4, 0);
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.format, (PacketFormat{192, 4}));
    EXPECT_EQ(reading.packets, 9U);
    EXPECT_EQ(reading.damage.packets(), 0U);
    EXPECT_EQ(Offered(stream), NEWS);
}

TEST(PacketFormat, TakesPacketsOf204BytesWithErrorCorrection) {
    const TsBytes stream = TsRepacked(Stream(), 0, 16);
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.format, (PacketFormat{204, 0}));
    EXPECT_EQ(reading.packets, 9U);
    EXPECT_EQ(reading.damage.packets(), 0U);
    EXPECT_EQ(Offered(stream), NEWS);
}

TEST(PacketFormat, DoesNotNeedBytesAroundTheLastPacket) {
    TsBytes stream = TsRepacked(Stream(), 0, 16);
    stream.resize(stream.size() - 16);
    EXPECT_EQ(Read(stream).packets, 9U);
    EXPECT_EQ(Read(stream).damage.packets(), 0U);
}

TEST(PacketFormat, IsFoundWhenTheFileBeginsWithinAPacket) {
    for (const auto& [before, behind] : {std::pair{0, 0}, {4, 0}, {0, 16}}) {
        TsBytes stream =
            TsRepacked(Stream(), static_cast<size_t>(before), static_cast<size_t>(behind));
        stream.erase(stream.begin(), stream.begin() + 100);
        const Reading reading = Read(stream);
        EXPECT_EQ(reading.format.stride, static_cast<size_t>(188 + before + behind));
        EXPECT_EQ(reading.packets, 8U) << before << ' ' << behind;
        EXPECT_EQ(reading.damage.lostSync, 1U);
    }
}

TEST(PacketFormat, IsKeptAfterDamage) {
    for (const auto& [before, behind] : {std::pair{4, 0}, {0, 16}}) {
        TsBytes stream =
            TsRepacked(Stream(), static_cast<size_t>(before), static_cast<size_t>(behind));
        stream.erase(stream.begin() + 300, stream.begin() + 310);
        const Reading reading = Read(stream);
        EXPECT_EQ(reading.packets, 8U) << before << ' ' << behind;
        EXPECT_EQ(reading.damage.lostSync, 1U);
    }
}

TEST(PacketFormat, IsFoundAgainAfterADamagedStart) {
    TsBytes stream(3000, 0x00);
    const TsBytes packets = TsRepacked(Stream(), 0, 16);
    stream.insert(stream.end(), packets.begin(), packets.end());
    const Reading reading = Read(stream);
    EXPECT_EQ(reading.format.stride, 204U);
    EXPECT_EQ(reading.packets, 9U);
    EXPECT_EQ(reading.damage.lostSync, 1U);
}

TEST(PacketFormat, Is188ByDefault) {
    EXPECT_EQ(DetectPacketFormat({}), PacketFormat{});
    EXPECT_EQ(DetectPacketFormat(TsBytes(5000, 0x47)), PacketFormat{});
    EXPECT_EQ(DetectPacketFormat(TsBytes(5000, 0x00)), PacketFormat{});
}

}  // namespace
}  // namespace applist::sim
