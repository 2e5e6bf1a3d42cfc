// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A port that breaks every contract that the conformance test checks. With BROKEN_PORT_CRASHES set,
// ui_app_main() crashes.
#include <cstdlib>

#include "app.h"
#include "app_control.h"
#include "conformance/SetUnderTest.h"
#include "factory_data.h"
#include "i18n_text.h"
#include "platform_log.h"
#include "settings_store.h"

namespace applist::test {
namespace {

class EmptySet : public SetUnderTest {
public:
    void HoldBool(const std::string& /*key*/, bool /*value*/) override {}
    void HoldInt(const std::string& /*key*/, int /*value*/) override {}
    void HoldFactoryItem(int /*id*/, int /*value*/) override {}
};

}  // namespace

std::unique_ptr<SetUnderTest> MakeSet() {
    return std::make_unique<EmptySet>();
}

}  // namespace applist::test

extern "C" {

int ui_app_main(int /*argc*/, char** /*argv*/, ui_app_callbacks* /*callbacks*/,
                void* /*user_data*/) {
    if (std::getenv("BROKEN_PORT_CRASHES") != nullptr) {
        std::abort();
    }
    return 0;
}

void ui_app_exit(void) {}

Evas_Object* app_get_preinitialized_window(const char* /*name*/) {
    static char window;
    return reinterpret_cast<Evas_Object*>(&window);
}

int app_control_create(app_control_h* /*request*/) {
    return -1;
}

int app_control_set_app_id(app_control_h /*request*/, const char* /*id*/) {
    return -1;
}

int app_control_add_extra_data(app_control_h /*request*/, const char* /*key*/,
                               const char* /*value*/) {
    return -1;
}

int app_control_send_launch_request(app_control_h /*request*/, app_control_reply_cb /*reply*/,
                                    void* /*user_data*/) {
    return 0;
}

int app_control_destroy(app_control_h /*request*/) {
    return 0;
}

int GetDataDirect(int /*id*/, void* /*buffer*/) {
    return FACTORY_DATA_INTEGER;
}

const char* i18n_get_text(const char* message_id) {
    return *message_id == 'n' ? "" : message_id;
}

int __dlog_print(int /*log_id*/, int /*priority*/, const char* /*tag*/, const char* /*format*/,
                 ...) {
    return -1;
}

int vconf_get_bool(const char* /*key*/, int* value) {
    *value = 7;
    return 0;
}

int vconf_get_int(const char* /*key*/, int* value) {
    *value = 7;
    return 0;
}
}
