// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListItem.h"
#include "fakes/FakeApp.h"
#include "fakes/FakeEcore.h"
#include "fakes/FakeListModel.h"
#include "fakes/FakePlatformLog.h"

namespace applist::test {

/// A control connected to a model of the items a, b and c, of which b is selected.
class ControlTest : public testing::Test {
protected:
    ControlTest() {
        TheApp() = {};
        TheEcore() = {};
        model.items = {&a, &b, &c};
        model.selection = &b;
        control = std::make_unique<DefaultAppListControl>();
        control->SetModel(&model);
        Forget();
    }
    void Forget() {
        ClearLog();
        TheEcore().history.clear();
        model.history.clear();
    }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    FakeListModel model;
    std::unique_ptr<DefaultAppListControl> control;
};

}  // namespace applist::test
