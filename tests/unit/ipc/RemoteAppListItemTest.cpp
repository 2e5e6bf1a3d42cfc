// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <ios>
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

RemoteAppListItem Item(const std::string& name, const std::string& id) {
    DefaultAppListItem item(name, id);
    return RemoteAppListItem(static_cast<AppListItem&>(item));
}

void ExpectItem(RemoteAppListItem& item, const std::string& name, const std::string& id) {
    EXPECT_EQ(item.GetVisibleName(), name);
    EXPECT_EQ(item.GetUnigueId(), id);
}

/// Writes the item, compares the bytes and reads them back.
void ExpectWireForm(const std::string& name, const std::string& id) {
    std::stringstream stream;
    stream << Item(name, id);
    EXPECT_EQ(stream.str(), ItemBytes(name, id));
    RemoteAppListItem item = Item("old", "old");
    EXPECT_TRUE(stream >> item);
    ExpectItem(item, name, id);
    EXPECT_EQ(stream.peek(), std::stringstream::traits_type::eof());
}

TEST(RemoteAppListItem, IsEmptyByDefault) {
    RemoteAppListItem item;
    ExpectItem(item, "", "");
}

TEST(ItemWire, HasEachStringAfterItsLength) {
    EXPECT_EQ(ItemBytes("Weather", "w1"),
              std::string("\x07\x00\x00\x00Weather\x02\x00\x00\x00w1", 17));
    ExpectWireForm("Weather", "w1");
    ExpectWireForm("", "");
    ExpectWireForm("Weather", "");
    ExpectWireForm("", "w1");
}

TEST(ItemWire, HasStringsOfAnyBytesAndLength) {
    std::string all;
    for (int value = 0; value < 256; ++value) {
        all += static_cast<char>(value);
    }
    ExpectWireForm(all, all + all);
    for (const size_t size :
         {15U, 16U, 255U, 256U, 4095U, 4096U, 4097U, 8192U, 0x10203U, 100000U}) {
        ExpectWireForm(std::string(size, 'n'), std::string(size + 1, 'i'));
    }
}

TEST(ItemWire, IsReadBackToBackAndLeavesWhatFollows) {
    std::istringstream in(ItemBytes("Weather", "w1") + ItemBytes("", "") + "rest");
    RemoteAppListItem first;
    RemoteAppListItem second = Item("old", "old");
    EXPECT_TRUE(in >> first >> second);
    ExpectItem(first, "Weather", "w1");
    ExpectItem(second, "", "");
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "rest");
}

TEST(ItemWire, IgnoresTheStreamsFormatting) {
    std::ostringstream out;
    out.width(40);
    out.fill('*');
    out << std::hex << Item("Weather", "w1");
    EXPECT_EQ(out.str(), ItemBytes("Weather", "w1"));
}

TEST(ItemWire, WritesNothingToAFailedStream) {
    std::ostringstream out;
    out.setstate(std::ios_base::failbit);
    out << Item("Weather", "w1");
    EXPECT_EQ(out.str(), "");
}

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

TEST(ItemWire, NeedsNoSeeking) {
    PipeBuffer buffer(ItemBytes(std::string(10000, 'n'), "i") + ItemBytes("News", "n1"));
    std::istream in(&buffer);
    RemoteAppListItem first;
    RemoteAppListItem second;
    EXPECT_TRUE(in >> first >> second);
    ExpectItem(first, std::string(10000, 'n'), "i");
    ExpectItem(second, "News", "n1");
}

void ExpectFailedReadLeavesTheItem(std::istream& in) {
    RemoteAppListItem item = Item("old name", "old id");
    in >> item;
    EXPECT_TRUE(in.fail());
    ExpectItem(item, "old name", "old id");
}

void ExpectRejected(const std::string& bytes) {
    std::istringstream seekable(bytes);
    ExpectFailedReadLeavesTheItem(seekable);
    PipeBuffer buffer(bytes);
    std::istream pipe(&buffer);
    ExpectFailedReadLeavesTheItem(pipe);
}

TEST(DamagedItem, IsRejectedWhereverItIsTruncatedAlsoAfterAWholeOne) {
    const std::string whole = ItemBytes("Weather", "w1");
    for (size_t size = 0; size < whole.size(); ++size) {
        SCOPED_TRACE(size);
        ExpectRejected(whole.substr(0, size));
        std::istringstream in(ItemBytes("News", "n1") + whole.substr(0, size));
        RemoteAppListItem first;
        EXPECT_TRUE(in >> first);
        ExpectItem(first, "News", "n1");
        ExpectFailedReadLeavesTheItem(in);
    }
}

TEST(DamagedItem, IsRejectedIfALengthPointsPastTheEnd) {
    for (const unsigned long length : {8UL, 0xFFUL, 0x100UL, 4096UL, 4097UL, 0xFFFFUL, 0x10000UL,
                                       0x7FFFFFFFUL, 0x80000000UL, 0xFFFFFFFEUL, 0xFFFFFFFFUL}) {
        SCOPED_TRACE(length);
        ExpectRejected(Length(length) + "Weather");
        ExpectRejected(Length(7) + "Weather" + Length(length) + "w1");
    }
}

TEST(DamagedItem, AllocatesMemoryOnlyForTheReceivedBytes) {
    for (const size_t received : {100U, 100000U}) {
        std::istringstream in(Length(0xFFFFFFFFUL) + std::string(received, 'n'));
        RemoteAppListItem item = Item("old name", "old id");
        const AllocationMeter meter;
        in >> item;
        // Short texts are read without an allocation.
        EXPECT_LE(meter.Total(), received == 100 ? 0 : 4 * received);
        EXPECT_TRUE(in.fail());
    }
}

TEST(DamagedItem, IsRejectedOnAStreamThatFailedBefore) {
    std::istringstream in(ItemBytes("Weather", "w1"));
    in.setstate(std::ios_base::failbit);
    ExpectFailedReadLeavesTheItem(in);
}

TEST(DamagedItem, IsRejectedIfTheStreamBreaks) {
    BrokenBuffer buffer;
    std::istream in(&buffer);
    ExpectFailedReadLeavesTheItem(in);
    EXPECT_TRUE(in.bad());
}

TEST(DamagedItem, IsUnchangedEvenIfTheStreamThrows) {
    std::istringstream in(Length(7) + "Weather");
    in.exceptions(std::ios_base::failbit);
    RemoteAppListItem item = Item("old name", "old id");
    EXPECT_THROW(in >> item, std::ios_base::failure);
    ExpectItem(item, "old name", "old id");
}

}  // namespace
}  // namespace applist::test
