// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>

#include <gtest/gtest.h>

#include "applist/DefaultAppListItem.h"
#include "applist/RemoteAppListItem.h"
#include "support/AllocationWatch.h"
#include "unit/ipc/WireBytes.h"

namespace applist::test {
namespace {

/// A stream buffer without seeking that returns its bytes a few at a time, like a pipe.
class PipeBuffer : public std::streambuf {
public:
    explicit PipeBuffer(std::string bytes) : m_bytes(std::move(bytes)) {}

protected:
    int_type underflow() override {
        if (m_given == m_bytes.size()) {
            return traits_type::eof();
        }
        const size_t size = std::min<size_t>(3, m_bytes.size() - m_given);
        char* begin = m_bytes.data() + m_given;
        setg(begin, begin, begin + size);
        m_given += size;
        return traits_type::to_int_type(*begin);
    }

private:
    std::string m_bytes;
    size_t m_given = 0;
};

/// A stream buffer that fails when read.
class BrokenBuffer : public std::streambuf {
protected:
    int_type underflow() override { throw 1; }
};

RemoteAppListItem OldItem() {
    DefaultAppListItem old("old name", "old id");
    return RemoteAppListItem(old);
}

void ExpectFailedReadLeavesTheItem(std::istream& in) {
    RemoteAppListItem item = OldItem();
    in >> item;
    EXPECT_TRUE(in.fail());
    EXPECT_EQ(item.GetVisibleName(), "old name");
    EXPECT_EQ(item.GetUnigueId(), "old id");
}

void ExpectRejected(const std::string& bytes) {
    std::istringstream seekable(bytes);
    ExpectFailedReadLeavesTheItem(seekable);
    PipeBuffer buffer(bytes);
    std::istream pipe(&buffer);
    ExpectFailedReadLeavesTheItem(pipe);
}

TEST(DamagedItem, IsRejectedWhereverItIsCutOff) {
    const std::string whole = ItemBytes("Weather", "w1");
    ASSERT_EQ(whole.size(), 17U);
    for (size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        ExpectRejected(whole.substr(0, size));
    }
}

TEST(DamagedItem, IsRejectedWhereverItIsCutOffAfterAWholeOne) {
    const std::string whole = ItemBytes("Weather", "w1");
    for (size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        std::istringstream in(ItemBytes("News", "n1") + whole.substr(0, size));
        RemoteAppListItem first;
        EXPECT_TRUE(in >> first);
        EXPECT_EQ(first.GetUnigueId(), "n1");
        ExpectFailedReadLeavesTheItem(in);
    }
}

TEST(DamagedItem, IsRejectedWhenALengthPointsPastTheEnd) {
    for (const unsigned long length : {8UL, 0xFFUL, 0x100UL, 4096UL, 4097UL, 0xFFFFUL, 0x10000UL,
                                       0x7FFFFFFFUL, 0x80000000UL, 0xFFFFFFFEUL, 0xFFFFFFFFUL}) {
        SCOPED_TRACE(length);
        ExpectRejected(Length(length) + "Weather");
        ExpectRejected(Length(7) + "Weather" + Length(length) + "w1");
    }
}

TEST(DamagedItem, CostsNoMemoryForBytesThatDidNotCome) {
    std::istringstream in(Length(0xFFFFFFFFUL) + std::string(100, 'n'));
    RemoteAppListItem item = OldItem();
    const AllocationMeter meter;
    in >> item;
    EXPECT_EQ(meter.Total(), 0U);
    EXPECT_TRUE(in.fail());
}

TEST(DamagedItem, CostsMemoryInProportionToTheBytesThatCame) {
    constexpr size_t CAME = 100000;
    std::istringstream in(Length(0xFFFFFFFFUL) + std::string(CAME, 'n'));
    RemoteAppListItem item = OldItem();
    const AllocationMeter meter;
    in >> item;
    EXPECT_LT(meter.Total(), 4 * CAME);
    EXPECT_TRUE(in.fail());
}

TEST(DamagedItem, IsRejectedOnAStreamThatFailedBefore) {
    std::istringstream in(ItemBytes("Weather", "w1"));
    in.setstate(std::ios_base::failbit);
    ExpectFailedReadLeavesTheItem(in);
}

TEST(DamagedItem, IsRejectedWhenTheStreamBreaks) {
    BrokenBuffer buffer;
    std::istream in(&buffer);
    ExpectFailedReadLeavesTheItem(in);
    EXPECT_TRUE(in.bad());
}

TEST(DamagedItem, IsUnchangedEvenWhenTheStreamWasToldToThrow) {
    std::istringstream in(Length(7) + "Weather");
    in.exceptions(std::ios_base::failbit);
    RemoteAppListItem item = OldItem();
    EXPECT_THROW(in >> item, std::ios_base::failure);
    EXPECT_EQ(item.GetVisibleName(), "old name");
    EXPECT_EQ(item.GetUnigueId(), "old id");
}

TEST(ItemWire, NeedsNoSeeking) {
    PipeBuffer buffer(ItemBytes(std::string(10000, 'n'), "i") + ItemBytes("News", "n1"));
    std::istream in(&buffer);
    RemoteAppListItem first;
    RemoteAppListItem second;
    EXPECT_TRUE(in >> first >> second);
    EXPECT_EQ(first.GetVisibleName(), std::string(10000, 'n'));
    EXPECT_EQ(second.GetUnigueId(), "n1");
}

}  // namespace
}  // namespace applist::test
