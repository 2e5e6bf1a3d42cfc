// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include "FactoryData.h"
#include "SettingsStore.h"
#include "unit/visibility/PlatformRoot.h"
#include "unit/visibility/StoreContract.h"

namespace applist::test {
namespace {

class DesktopStores : public Stores {
public:
    void HoldBool(const std::string& key, bool value) override {
        EXPECT_EQ(desktop::WriteSetting(key, value), std::nullopt);
    }
    void HoldInt(const std::string& key, int value) override {
        EXPECT_EQ(desktop::WriteSetting(key, value), std::nullopt);
    }
    void HoldFactoryItem(int id, int value) override {
        EXPECT_EQ(desktop::WriteFactoryItem(id, value), std::nullopt);
    }

private:
    PlatformRoot m_root;
};

}  // namespace

std::unique_ptr<Stores> MakeStores() {
    return std::make_unique<DesktopStores>();
}

}  // namespace applist::test
