// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "fakes/FakeFactoryData.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeSettings.h"
#include "fakes/FakeSleep.h"

namespace applist::test {

inline const std::string AUTORUN = "db/menu/broadcasting/autorun-dataservice";
inline const std::string DATA_SERVICE = "memory/tv-viewer/data_service";
inline const std::string AUTOSTART = "memory/javamw/autostart-app";

/// A set with fake stores and a fake clock.
class Set : public testing::Test {
protected:
    Set() {
        TheSettings() = {};
        TheFactoryData() = {};
        TheSleep() = {};
        ClearLog();
    }

    /// Stores all three settings.
    static void Hold(int flag, bool autorun, int autostart) {
        TheSettings().ints = {{DATA_SERVICE, flag}, {AUTOSTART, autostart}};
        TheSettings().bools = {{AUTORUN, autorun ? 1 : 0}};
    }

    using Reads = std::vector<std::string>;
};

}  // namespace applist::test
