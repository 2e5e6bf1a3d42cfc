// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <string>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A real dbus-daemon of the test's own, like a set's system bus, on which everybody may do
/// everything. Ready for connections once constructed; ends with this object.
class PrivateBus {
public:
    /// The environment variable that makes a program take a bus for the system bus.
    static constexpr const char* ADDRESS_VARIABLE = "DBUS_SYSTEM_BUS_ADDRESS";

    /// rules are elements of the daemon's configuration, such as "<deny own='a.b'/>", that follow
    /// and so overrule what allows everything. A daemon that does not start fails the running test
    /// and leaves the address empty.
    explicit PrivateBus(const std::string& rules = "");

    /// Where the bus listens; the value for ADDRESS_VARIABLE.
    const std::string& Address() const { return m_address; }

    /// The environment for a ChildProcess on this bus.
    ChildProcess::Environment Environment() const { return {{ADDRESS_VARIABLE, m_address}}; }

    /// Kills the daemon, which closes every connection.
    void Stop();
    /// Makes the daemon deaf, as one that hangs is: it keeps its connections and reads nothing from
    /// them. Thaw() makes it go on.
    void Freeze() const;
    void Thaw() const;

private:
    TemporaryDir m_folder;
    std::unique_ptr<ChildProcess> m_daemon;
    std::string m_address;
};

}  // namespace applist::test
