// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// A middleware that carries out its arguments in order, prints "done" and then waits to be killed:
//   faulty_middleware BUS-ADDRESS [own:ENDING | announce:ENDING | await:ENDING | freeze:PID |
//                                  add:ID]...
// An ending is that of a name of the handshake, such as "_CLIENT_SYN". "add" calls without waiting
// for the reply: the next step starts as soon as the bus has accepted the call.
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>

#include "link/Protocol.h"
#include "support/GlibWait.h"
#include "support/ScriptedPeer.h"

namespace {

using applist::test::RunUntil;
using applist::test::ScriptedPeer;

bool Add(ScriptedPeer& peer, const std::string& id) {
    namespace sim = applist::sim;
    peer.Send(peer.Events().back().sender, sim::names::OBJECT_PATH,
              sim::EncodeCall(sim::Function::AddItems, {{id, "Item " + id}}));
    // The bus handles messages in order, so its answer to this one means that it has accepted the
    // earlier ones.
    peer.Own("_CLIENT_SYN");
    return true;
}

bool Do(ScriptedPeer& peer, const std::string& verb, const std::string& object) {
    if (verb == "own") {
        peer.Own(object);
        return true;
    }
    if (verb == "announce") {
        peer.Announce(object);
        return true;
    }
    if (verb == "freeze") {
        return kill(static_cast<pid_t>(std::strtol(object.c_str(), nullptr, 10)), SIGSTOP) == 0;
    }
    return verb == "await" ? peer.AwaitAnnouncement(object) : verb == "add" && Add(peer, object);
}

bool Do(ScriptedPeer& peer, const std::string& step) {
    const size_t colon = step.find(':');
    return colon != std::string::npos && Do(peer, step.substr(0, colon), step.substr(colon + 1));
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " BUS-ADDRESS [STEP]...\n";
        return 2;
    }
    ScriptedPeer peer(argv[1]);
    std::cout << "listening" << std::endl;
    for (int i = 2; i < argc; ++i) {
        if (!Do(peer, argv[i])) {
            std::cerr << argv[0] << ": cannot " << argv[i] << '\n';
            return 1;
        }
    }
    std::cout << "done" << std::endl;
    return RunUntil([] { return false; }, std::chrono::hours(1)) ? 0 : 1;
}
