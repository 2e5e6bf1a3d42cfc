// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// settings_store.h and factory_data.h.
#include <array>
#include <climits>
#include <cstring>

#include <gtest/gtest.h>

#include "conformance/Contract.h"
#include "conformance/SetUnderTest.h"
#include "factory_data.h"
#include "settings_store.h"

namespace applist::test {
namespace {

class Stores : public testing::Test {
protected:
    std::unique_ptr<SetUnderTest> m_set = MakeSet();
};

struct Item {
    alignas(int) std::array<unsigned char, FACTORY_DATA_BUFFER_SIZE> buffer;
    int status;

    explicit Item(int id) {
        buffer.fill(0xA5);
        status = GetDataDirect(id, buffer.data());
    }
    int Word() const {
        int word = 0;
        std::memcpy(&word, buffer.data(), sizeof word);
        return word;
    }
};

TEST_F(Stores, GivesABoolAsZeroOrOne) {
    CONTRACT("settings_store.h", "vconf_get_bool()");
    for (const char* key : {"db/a/truth", "memory/a/truth"}) {
        for (const bool stored : {true, false}) {
            m_set->HoldBool(key, stored);
            int value = 77;
            EXPECT_EQ(vconf_get_bool(key, &value), 0);
            EXPECT_EQ(value, stored ? 1 : 0);
        }
    }
}

TEST_F(Stores, GivesEvery32BitInt) {
    CONTRACT("settings_store.h", "vconf_get_int()");
    for (const char* key : {"db/a/number", "memory/a/number"}) {
        for (const int stored : {0, 1, -1, 7, INT_MAX, INT_MIN}) {
            m_set->HoldInt(key, stored);
            int value = 77;
            EXPECT_EQ(vconf_get_int(key, &value), 0);
            EXPECT_EQ(value, stored);
        }
    }
}

TEST_F(Stores, FailsForAMissingKeyAndLeavesTheValue) {
    CONTRACT("settings_store.h", "vconf_get_bool() and vconf_get_int()");
    int value = 77;
    EXPECT_LT(vconf_get_bool("db/none", &value), 0);
    EXPECT_LT(vconf_get_int("memory/none", &value), 0);
    EXPECT_EQ(value, 77);
}

TEST_F(Stores, FailsForAKeyOfTheOtherTypeAndLeavesTheValue) {
    CONTRACT("settings_store.h", "vconf_get_bool() and vconf_get_int()");
    m_set->HoldInt("db/number", 1);
    m_set->HoldBool("db/truth", true);
    int value = 77;
    EXPECT_LT(vconf_get_bool("db/number", &value), 0);
    EXPECT_LT(vconf_get_int("db/truth", &value), 0);
    EXPECT_EQ(value, 77);
}

TEST_F(Stores, ReadsAnew) {
    CONTRACT("settings_store.h", "vconf_get_int()");
    int value = 77;
    m_set->HoldInt("memory/number", 1);
    EXPECT_EQ(vconf_get_int("memory/number", &value), 0);
    m_set->HoldInt("memory/number", 2);
    EXPECT_EQ(vconf_get_int("memory/number", &value), 0);
    EXPECT_EQ(value, 2);
}

TEST_F(Stores, DistinguishAMissingItemFromOneThatIsZero) {
    CONTRACT("settings_store.h", "vconf_get_bool() and vconf_get_int()");
    m_set->HoldBool("db/a/truth", false);
    m_set->HoldInt("memory/a/number", 0);
    int value = 77;
    EXPECT_EQ(vconf_get_bool("db/a/truth", &value), 0);
    EXPECT_EQ(value, 0);
    EXPECT_LT(vconf_get_bool("db/another/truth", &value), 0);
    EXPECT_LT(vconf_get_int("memory/another/number", &value), 0);
}

TEST_F(Stores, GivesAFactoryItemInTheFirstWord) {
    CONTRACT("factory_data.h", "GetDataDirect()");
    for (const int stored : {8, 0, -1, INT_MAX, INT_MIN}) {
        m_set->HoldFactoryItem(194, stored);
        const Item item(194);
        EXPECT_EQ(item.status, FACTORY_DATA_INTEGER);
        EXPECT_EQ(item.Word(), stored);
    }
}

TEST_F(Stores, FailsForAMissingFactoryItemAndLeavesTheBuffer) {
    CONTRACT("factory_data.h", "GetDataDirect()");
    const Item item(194);
    EXPECT_NE(item.status, FACTORY_DATA_INTEGER);
    for (const unsigned char byte : item.buffer) {
        ASSERT_EQ(byte, 0xA5);
    }
}

}  // namespace
}  // namespace applist::test
