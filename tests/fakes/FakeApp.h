// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "app.h"

/// Records the calls of the application framework. Linking it provides ui_app_main(), ui_app_exit()
/// and app_get_preinitialized_window(). Each exit is also noted in the history of FakePlatformLog,
/// as "ui_app_exit".
namespace applist::test {

struct FakeApp {
    /// The number of calls of ui_app_exit().
    int exits = 0;
    /// The names passed to app_get_preinitialized_window().
    std::vector<std::string> windowRequests;
    /// The result of app_get_preinitialized_window().
    Evas_Object* preinitializedWindow = nullptr;
    /// The tables, user data and last arguments that ui_app_main() received.
    std::vector<ui_app_callbacks> runs;
    std::vector<void*> userData;
    int argc = -1;
    char** argv = nullptr;
    /// Called by ui_app_main(), which calls nothing else.
    std::function<void(const ui_app_callbacks&, void*)> life = [](const auto&, void*) {};
    /// The result of ui_app_main().
    int result = 0;
};

/// The one framework of the process; tests assign FakeApp{} to reset it.
FakeApp& TheApp();

}  // namespace applist::test
