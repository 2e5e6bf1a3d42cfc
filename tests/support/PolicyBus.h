// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/Journal.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// Somebody who runs programs on a set. The name is known to the bus only, the number to everybody;
/// neither needs an account on this machine.
struct User {
    std::string name;
    unsigned id;
};
inline const User APPLICATION_USER{APPLIST_USER, 64101};
inline const User MIDDLEWARE_USER{APPLIST_MIDDLEWARE_USER, 64102};
inline const User STRANGER{"stranger", 64103};
inline const User ROOT{"root", 0};

/// A bus of type "system" on which rules of a policy hold, and which tells users apart. Needs root;
/// ends with this object.
class PolicyBus {
public:
    /// What serves the bus.
    enum class Daemon { DBUS_DAEMON, DBUS_BROKER };

    /// As Debian's system bus: names and calls are denied, signals and replies allowed.
    static const std::string USUAL_RULES;
    /// Signals are denied, too, and so is receiving anything but the bus' own words and replies.
    static const std::string CLOSED_RULES;
    /// As a developer's: everybody may do everything.
    static const std::string OPEN_RULES;

    /// rules hold by default; policyFile, unless empty, is read after them. A bus that does not
    /// start fails the running test.
    PolicyBus(Daemon daemon, const std::string& rules, const std::string& policyFile);
    ~PolicyBus() = default;
    PolicyBus(const PolicyBus&) = delete;
    PolicyBus& operator=(const PolicyBus&) = delete;
    PolicyBus(PolicyBus&&) = delete;
    PolicyBus& operator=(PolicyBus&&) = delete;

    /// Starts a program as user, with no capability and no other group. A program of the build goes
    /// by its file name. environment comes on top of the bus' address.
    std::unique_ptr<ChildProcess> Start(const User& user, const std::vector<std::string>& argv,
                                        const ChildProcess::Environment& environment = {}) const;

    /// Waits until the bus has logged that it denied sender, a unique name, at least count
    /// messages. Returns how many it has logged, fewer than count only after PATIENCE.
    size_t AwaitDenials(const std::string& sender, size_t count) const;

    /// A new folder that belongs to user alone.
    std::string FolderOf(const User& user, const std::string& name) const;

    /// Where started programs find what the build made beside bin/: themes, texts.
    std::string Share() const { return Path("built/share"); }

private:
    std::string Path(const std::string& name) const { return m_folder.path() / name; }
    void WriteAccounts() const;
    void WriteConfiguration(const std::string& rules, const std::string& policyFile) const;
    void StartDaemon();
    void StartBroker();

    TemporaryDir m_folder;
    std::unique_ptr<Journal> m_journal;  ///< Null on a dbus-daemon, which logs to its stderr.
    std::unique_ptr<ChildProcess> m_daemon;
};

/// Skips the running test, with the reason, unless it is run by root. Nothing else skips it.
void SkipUnlessRoot();

/// Such as "DbusDaemon"; part of the names of tests.
std::string NameOf(PolicyBus::Daemon daemon);
inline std::ostream& operator<<(std::ostream& out, PolicyBus::Daemon daemon) {
    return out << NameOf(daemon);
}

}  // namespace applist::test
