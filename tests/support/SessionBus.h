// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A session bus for one test, set up like a desktop's. It starts the services in the data folders
/// of its environment, with that environment. Their output appears on the daemon's streams.
class SessionBus {
public:
    /// A daemon that does not start fails the running test.
    explicit SessionBus(const ChildProcess::Environment& environment);

    /// The environment for a ChildProcess on this bus.
    ChildProcess::Environment Environment() const {
        return {{"DBUS_SESSION_BUS_ADDRESS", m_address}};
    }
    ChildProcess& daemon() { return m_daemon; }

private:
    TemporaryDir m_folder;
    std::string m_address;
    ChildProcess m_daemon;
};

}  // namespace applist::test
