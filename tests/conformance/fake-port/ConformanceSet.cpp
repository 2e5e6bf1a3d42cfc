// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "conformance/SetUnderTest.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeAppControl.h"
#include "fakes/FakeFactoryData.h"
#include "fakes/FakeSettings.h"

namespace applist::test {
namespace {

// A normal life. The fakes do not have a loop, so it ends after all callbacks.
void Live(const ui_app_callbacks& callbacks, void* data) {
    TheApp().result = -1;
    if (!callbacks.create(data)) {
        return;
    }
    app_control_h request = nullptr;
    app_control_create(&request);
    callbacks.app_control(request, data);
    app_control_destroy(request);
    callbacks.terminate(data);
    TheApp().result = 0;
}

class FakeSet : public SetUnderTest {
public:
    FakeSet() {
        TheSettings() = {};
        TheFactoryData() = {};
        TheAppControl() = {};
        TheApp() = {};
        TheApp().life = Live;
    }
    void HoldBool(const std::string& key, bool value) override {
        TheSettings().bools[key] = value ? 1 : 0;
    }
    void HoldInt(const std::string& key, int value) override { TheSettings().ints[key] = value; }
    void HoldFactoryItem(int /*id*/, int value) override { TheFactoryData().Hold(value); }
};

}  // namespace

std::unique_ptr<SetUnderTest> MakeSet() {
    return std::make_unique<FakeSet>();
}

}  // namespace applist::test
