// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A middleware that connects to the channel "Applist" on the bus named by its only argument and
// then stays until it is killed. It finds an application that is already there.
#include <chrono>
#include <iostream>

#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: " << argv[0] << " BUS-ADDRESS\n";
        return 2;
    }
    applist::test::ScriptedPeer peer(argv[1]);
    peer.Announce("_CLIENT_SYN");
    if (!peer.AwaitAnnouncement("_SERVICE_SYN_ACK")) {
        std::cerr << argv[0] << ": nobody answered\n";
        return 1;
    }
    peer.Announce("_CLIENT_ACK");
    return applist::test::RunUntil([] { return false; }, std::chrono::hours(1)) ? 0 : 1;
}
