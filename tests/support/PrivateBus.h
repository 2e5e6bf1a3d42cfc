// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A real dbus-daemon for one test, like a set's system bus but without restrictions. The bus
/// accepts connections once constructed and ends with this object.
class PrivateBus {
public:
    /// The environment variable that makes a program use this bus as the system bus.
    static constexpr const char* ADDRESS_VARIABLE = "DBUS_SYSTEM_BUS_ADDRESS";

    /// rules are elements of the daemon's configuration, such as "<deny own='a.b'/>". They follow,
    /// and thus override, the rule that allows everything. A daemon that does not start fails the
    /// running test and leaves the address empty.
    explicit PrivateBus(const std::string& rules = "");

    /// The bus' address; the value for ADDRESS_VARIABLE.
    const std::string& Address() const { return m_address; }

    /// The environment for a ChildProcess on this bus.
    ChildProcess::Environment Environment() const { return {{ADDRESS_VARIABLE, m_address}}; }

    /// Kills the daemon, which closes every connection.
    void Stop();
    /// Stops the daemon as if it hung: connections stay open but are not read. Thaw() resumes it.
    void Freeze() const;
    void Thaw() const;

private:
    TemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
    std::string m_address;
};

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
