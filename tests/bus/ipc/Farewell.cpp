// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A program that ends like the application after an activation: it sends a notification, destroys
// the channel and calls _exit() at once.
#include <iostream>
#include <optional>
#include <string>
#include <unistd.h>
#include <utility>
#include <vector>

#include "ipc/IPCApplist.h"
#include "ipc/javamw-dbus-local.h"
#include "support/GlibWait.h"

namespace {

struct Program {
    bool connected = false;
    void Connected(const std::string& /*partner*/) { connected = true; }
};

}  // namespace

int main() {
    Program program;
    std::optional<IPCApplist<JavaMWDbusLocal, Program>> channel(std::in_place, "Applist");
    channel->RegisterOnConnectionReady(&program, &Program::Connected);
    if (!applist::test::RunUntil([&program] { return program.connected; })) {
        std::cerr << "farewell: no partner connected\n";
        return 1;
    }
    std::vector<char> event{'b', 'y', 'e'};
    channel->SendNotification(event);
    channel.reset();
    _exit(0);
}
