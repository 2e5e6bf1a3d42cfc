// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// channel-echo: the application's transport with nothing above it. "Send" answers with the bytes of
// the call; 'E' is sent on to all partners. Prints its unique bus name.
#include <cstdio>

#include <gio/gio.h>

#include "ipc/javamw-dbus-local.h"

namespace {

class Echo : public JavaMWDbusLocal {
public:
    Echo() : JavaMWDbusLocal("Applist") {}

    std::vector<char> HandleMessage(std::vector<char>& data) override {
        if (!data.empty() && data.front() == 'E') {
            SendNotification(data);
        }
        return data;
    }
};

}  // namespace

int main() {
    const Echo echo;
    g_autoptr(GDBusConnection) bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr);
    if (bus == nullptr) {
        std::fputs("channel-echo: no bus\n", stderr);
        return 1;
    }
    std::puts(g_dbus_connection_get_unique_name(bus));
    std::fflush(stdout);
    g_autoptr(GMainLoop) loop = g_main_loop_new(nullptr, FALSE);
    g_main_loop_run(loop);
    return 0;
}
