// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "VirtualEcore.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListItem.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeListModel.h"
#include "fakes/FakeMutex.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

using headless::TheEcore;

/// The interval as the control logs it: "65s".
inline const std::string INTERVAL = std::to_string(DefaultAppListControl::AUTO_CLOSE_SECONDS) + "s";

/// A control connected to a model of the items a, b and c, with b selected. Each test also checks
/// that the control holds its mutex whenever it uses the timer.
class ControlTest : public testing::Test {
protected:
    ControlTest() {
        TheApp() = {};
        TheEcore() = {};
        TheMutexes() = {};
        TheEcore().onCall = [](const std::string& call) {
            if (call.starts_with("ecore_timer")) {
                EXPECT_EQ(TheMutexes().held, 1) << call;
            }
        };
        model.items = {&a, &b, &c};
        model.selection = &b;
        control = std::make_unique<DefaultAppListControl>();
        control->SetModel(&model);
        Forget();
    }
    void Forget() {
        ClearLog();
        TheEcore().history.clear();
        TheMutexes().calls.clear();
        model.history.clear();
    }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    FakeListModel model;
    std::unique_ptr<DefaultAppListControl> control;
};

}  // namespace applist::test
