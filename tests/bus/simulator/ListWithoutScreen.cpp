// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// list-without-screen: the list and its channel to the middleware, with signals in place of keys.
// SIGUSR1 selects the next item, SIGUSR2 activates the selected one and ends the program, as an
// activation on the screen does; SIGTERM ends it. Prints "ready" when it can be found.
#include <csignal>
#include <cstdio>

#include <gio/gio.h>
#include <glib-unix.h>

#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"
#include "platform_log.h"

namespace {

struct List {
    DefaultAppListModel items;
    LocalAppListModel model{&items};
    GMainLoop* loop = g_main_loop_new(nullptr, FALSE);
};

void SelectNext(List& list) {
    const auto items = list.model.GetAllItems();
    for (size_t i = 0; i < items.size(); ++i) {
        if (items[i] == list.model.GetSelection()) {
            list.model.SetSelection(items[(i + 1) % items.size()]);
            return;
        }
    }
}

int OnNext(void* list) {
    SelectNext(*static_cast<List*>(list));
    return G_SOURCE_CONTINUE;
}

int OnActivate(void* data) {
    auto* list = static_cast<List*>(data);
    list->model.SetClicked(list->model.GetSelection());
    g_main_loop_quit(list->loop);
    return G_SOURCE_CONTINUE;
}

int OnEnd(void* list) {
    g_main_loop_quit(static_cast<List*>(list)->loop);
    return G_SOURCE_CONTINUE;
}

// GIO sends from a queue, which is lost when the process ends. The real application does not need
// this call, because closing its window takes longer than sending.
void Flush() {
    if (GDBusConnection* bus = g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)) {
        g_dbus_connection_flush_sync(bus, nullptr, nullptr);
        g_object_unref(bus);
    }
}

}  // namespace

// The log is not needed.
int __dlog_print(int, int, const char*, const char*, ...) {
    return 0;
}

int main() {
    List list;
    g_unix_signal_add(SIGUSR1, OnNext, &list);
    g_unix_signal_add(SIGUSR2, OnActivate, &list);
    g_unix_signal_add(SIGTERM, OnEnd, &list);
    static_cast<void>(std::puts("ready"));
    static_cast<void>(std::fflush(stdout));
    g_main_loop_run(list.loop);
    Flush();
    g_main_loop_unref(list.loop);
    return 0;
}
