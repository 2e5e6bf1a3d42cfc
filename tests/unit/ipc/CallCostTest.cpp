// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The memory that a call can make the program allocate must be proportional to the bytes received,
// not to the lengths in them. Linked with a log that does not store lines, because their memory
// would count, too.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "fakes/FakeTransport.h"
#include "support/AllocationWatch.h"
#include "unit/ipc/WireBytes.h"

namespace applist::test {
namespace {

constexpr size_t SHORT_CALL = 40;
constexpr size_t KIB = 1024;
constexpr size_t MIB = KIB * KIB;
constexpr unsigned long LENGTHS[] = {0UL,        1UL,          8UL,          28UL,        4096UL,
                                     0x100000UL, 0x7FFFFFFFUL, 0x80000000UL, 0xFFFFFFFFUL};

/// The whole frame of a call, as the transport passes it.
std::vector<char> Frame(const std::string& payload, int function) {
    return Bytes(payload + Length(static_cast<unsigned long>(function)));
}

class ACall : public testing::Test {
protected:
    static void Deliver(std::vector<char> frame) { TheTransport().live->HandleMessage(frame); }

    DefaultAppListModel m_model;
    LocalAppListModel m_local{&m_model};
};

/// The sum of all allocations of one 40-byte call to an empty list, including freed ones.
size_t CostOf(std::string payload, int function) {
    payload.resize(SHORT_CALL - 4);
    std::vector<char> frame = Frame(payload, function);
    EXPECT_EQ(frame.size(), SHORT_CALL);
    TheTransport() = FakeTransport{};
    DefaultAppListModel model;
    const LocalAppListModel local(&model);
    const AllocationMeter meter;
    TheTransport().live->HandleMessage(frame);
    return meter.Total();
}

TEST(AShortCall, TakesUnderFourKibibytesWhateverItClaims) {
    for (int function = 1999; function <= 2009; ++function) {
        for (const unsigned long first : LENGTHS) {
            for (const unsigned long second : LENGTHS) {
                const std::string payload = Length(first) + Length(second);
                EXPECT_LT(CostOf(payload, function), 4 * KIB)
                    << "function " << function << " claiming " << first << " and " << second;
            }
        }
    }
}

// Items without name and id give the most items for the bytes.
TEST_F(ACall, OfSixteenMebibytesOfTheSmallestItemsTakesLessThanTwentyTimesThat) {
    std::vector<char> frame = Frame(std::string(16 * MIB, '\0'), 2004);
    const AllocationMeter meter;
    Deliver(std::move(frame));
    EXPECT_LT(meter.Peak(), 20 * 16 * MIB);
    RecordProperty("peak_mib", static_cast<int>(meter.Peak() / MIB));
    EXPECT_EQ(m_local.GetAllItems().size(), 1U);
}

TEST_F(ACall, ThatEmptiesTheListGivesAllOfItBack) {
    const AllocationMeter meter;
    Deliver(Frame(std::string(MIB, '\0'), 2004));
    const size_t full = meter.Held();
    Deliver(Frame("", 2003));
    // The emptied hash tables are kept for the next items.
    EXPECT_LT(meter.Held(), full / 3);
}

}  // namespace
}  // namespace applist::test
