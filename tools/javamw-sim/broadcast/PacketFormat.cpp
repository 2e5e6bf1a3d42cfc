// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "broadcast/PacketFormat.h"

#include <algorithm>
#include <array>
#include <vector>

namespace applist::sim {
namespace {

constexpr size_t TIMED_STRIDE = 192;
constexpr size_t TIME_STAMP_SIZE = 4;
constexpr std::array STRIDES{PACKET_SIZE, TIMED_STRIDE, size_t{204}};
// Hundreds of packets: enough to tell, little to read.
constexpr size_t SAMPLE_SIZE = 65536;

// Sync bytes at the best of all starts, as the part of the packets that should have one.
double Regularity(ByteSpan sample, size_t stride) {
    std::vector<size_t> found(stride, 0);
    for (size_t position = 0; position < sample.size(); ++position) {
        found[position % stride] += sample[position] == SYNC_BYTE ? 1 : 0;
    }
    const size_t best = *std::max_element(found.begin(), found.end());
    return std::min(1.0, static_cast<double>(best * stride) / static_cast<double>(sample.size()));
}

}  // namespace

PacketFormat DetectPacketFormat(ByteSpan stream) {
    const ByteSpan sample = stream.first(std::min(stream.size(), SAMPLE_SIZE));
    // Below two packets any stride fits.
    if (sample.size() < 2 * STRIDES.back()) {
        return {};
    }
    PacketFormat format;
    double best = 0;
    for (const size_t stride : STRIDES) {
        const double regularity = Regularity(sample, stride);
        if (regularity > best) {
            best = regularity;
            format.stride = stride;
        }
    }
    if (format.stride == TIMED_STRIDE && stream[TIME_STAMP_SIZE] == SYNC_BYTE) {
        format.prefix = TIME_STAMP_SIZE;
    }
    return format;
}

}  // namespace applist::sim
