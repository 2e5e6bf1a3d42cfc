// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdlib>

#include <gtest/gtest.h>

#include "conformance/SetUnderTest.h"
#include "data/FactoryData.h"
#include "data/SettingsStore.h"
#include "support/PlatformRoot.h"
#include "support/PrivateBus.h"

namespace applist::test {
namespace {

/// A temporary home and store, a private session bus and no screen.
class DesktopSet : public SetUnderTest {
public:
    DesktopSet() {
        for (const char* name : {"HOME", "XDG_RUNTIME_DIR"}) {
            setenv(name, m_home.path().c_str(), 1);
        }
        for (const char* name :
             {"DISPLAY", "WAYLAND_DISPLAY", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
            unsetenv(name);
        }
        // Windows are drawn in memory.
        setenv("ELM_ENGINE", "buffer", 1);
        setenv("DBUS_SESSION_BUS_ADDRESS", m_bus.Address().c_str(), 1);
    }
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
    PrivateBus m_bus;
    TemporaryDir m_home;
    PlatformRoot m_root;
};

}  // namespace

std::unique_ptr<SetUnderTest> MakeSet() {
    return std::make_unique<DesktopSet>();
}

}  // namespace applist::test
