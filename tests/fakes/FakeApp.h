// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app.h"

/// The application framework as a recorder. Linking it provides ui_app_main(), ui_app_exit() and
/// app_get_preinitialized_window(). Each exit is also noted in the history of FakePlatformLog, as
/// "ui_app_exit".
namespace applist::test {

struct FakeApp {
    /// How often ui_app_exit() was called.
    int exits = 0;
    /// The names under which app_get_preinitialized_window() was asked.
    std::vector<std::string> windowRequests;
    /// What app_get_preinitialized_window() answers.
    Evas_Object* preinitializedWindow = nullptr;
    /// The tables, user data and last arguments that ui_app_main() received.
    std::vector<ui_app_callbacks> runs;
    std::vector<void*> userData;
    int argc = -1;
    char** argv = nullptr;
    /// What happens within ui_app_main(), which calls nothing by itself.
    std::function<void(const ui_app_callbacks&, void*)> life = [](const auto&, void*) {};
    /// What ui_app_main() returns.
    int result = 0;
};

/// The one framework of the process; tests assign FakeApp{} to start afresh.
FakeApp& TheApp();

}  // namespace applist::test
