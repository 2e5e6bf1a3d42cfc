// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeApp.h"

#include "fakes/FakePlatformLog.h"

namespace applist::test {

FakeApp& TheApp() {
    static FakeApp app;
    return app;
}

}  // namespace applist::test

using applist::test::TheApp;

extern "C" int ui_app_main(int argc, char** argv, ui_app_callbacks* callbacks, void* user_data) {
    if (callbacks == nullptr) {
        return -1;
    }
    TheApp().argc = argc;
    TheApp().argv = argv;
    TheApp().runs.push_back(*callbacks);
    TheApp().userData.push_back(user_data);
    TheApp().life(*callbacks, user_data);
    return TheApp().result;
}

extern "C" void ui_app_exit(void) {
    ++TheApp().exits;
    applist::test::Note("ui_app_exit");
}

extern "C" Evas_Object* app_get_preinitialized_window(const char* name) {
    TheApp().windowRequests.emplace_back(name);
    return TheApp().preinitializedWindow;
}
