// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeFactoryData.h"
#include "fakes/FakeSettings.h"
#include "unit/visibility/StoreContract.h"

namespace applist::test {
namespace {

class FakeStores : public Stores {
public:
    FakeStores() {
        TheSettings() = {};
        TheFactoryData() = {};
    }
    void HoldBool(const std::string& key, bool value) override {
        TheSettings().bools[key] = value ? 1 : 0;
    }
    void HoldInt(const std::string& key, int value) override { TheSettings().ints[key] = value; }
    void HoldFactoryItem(int /*id*/, int value) override { TheFactoryData().Hold(value); }
};

}  // namespace

std::unique_ptr<Stores> MakeStores() {
    return std::make_unique<FakeStores>();
}

}  // namespace applist::test
