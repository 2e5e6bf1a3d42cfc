// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gmock/gmock.h>

#include "data/FactoryData.h"
#include "factory_data.h"
#include "fakes/FakePlatformLog.h"
#include "unit/visibility/PlatformRoot.h"

namespace applist::test {
namespace {

using desktop::ReadFactoryItem;
using desktop::RemoveFactoryItem;
using desktop::WriteFactoryItem;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr const char* FILE_NAME = "factory.ini";

class FactoryItems : public testing::Test {
protected:
    FactoryItems() { ClearLog(); }
    /// Reads as the program does. Only one word of the buffer is accessible.
    int Read(int id) { return GetDataDirect(id, &m_word); }

    PlatformRoot m_root;
    int m_word = 77;
};

TEST_F(FactoryItems, AreStoredByTheirNumber) {
    ASSERT_EQ(WriteFactoryItem(194, 8), std::nullopt);
    ASSERT_EQ(WriteFactoryItem(195, -1), std::nullopt);
    EXPECT_EQ(m_root.Content(FILE_NAME), "[items]\n194=8\n195=-1\n");
    EXPECT_EQ(Read(194), FACTORY_DATA_INTEGER);
    EXPECT_EQ(m_word, 8);
}

TEST_F(FactoryItems, CanBeRemoved) {
    ASSERT_EQ(WriteFactoryItem(194, 8), std::nullopt);
    EXPECT_EQ(RemoveFactoryItem(194), std::nullopt);
    EXPECT_NE(Read(194), FACTORY_DATA_INTEGER);
    EXPECT_EQ(m_word, 77);
    EXPECT_THAT(Log(), ElementsAre());
}

TEST_F(FactoryItems, ThatAreNoNumberAreFailuresThatNameTheFile) {
    for (const char* text :
         {"", "eight", "8.0", "8 8", "0x8", "+8", "2147483648", "-2147483649", "8;"}) {
        ClearLog();
        m_root.Write(FILE_NAME, std::string("[items]\n194=") + text + "\n");
        EXPECT_NE(Read(194), FACTORY_DATA_INTEGER) << text;
        EXPECT_EQ(m_word, 77);
        EXPECT_THAT(Log(), ElementsAre(Error(m_root.Path(FILE_NAME) +
                                             ": factory item 194 is not a 32-bit number")));
    }
}

TEST_F(FactoryItems, OfADamagedFileAreFailuresAndStayAsTheyAre) {
    m_root.Write(FILE_NAME, "194=8\n");
    EXPECT_NE(Read(194), FACTORY_DATA_INTEGER);
    ASSERT_EQ(Log().size(), 1U);
    EXPECT_THAT(Log()[0].message, HasSubstr(m_root.Path(FILE_NAME) + ": damaged: "));
    const auto failure = WriteFactoryItem(194, 81);
    ASSERT_TRUE(failure);
    EXPECT_THAT(*failure, HasSubstr(m_root.Path(FILE_NAME)));
    EXPECT_EQ(m_root.Content(FILE_NAME), "194=8\n");
}

}  // namespace
}  // namespace applist::test
