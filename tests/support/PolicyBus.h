// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {

/// A user of a set. Only the bus knows the name. The number needs no account on this machine.
struct User {
    std::string name;
    unsigned id;
};
inline const User APPLICATION_USER{APPLIST_USER, 64101};
inline const User MIDDLEWARE_USER{APPLIST_MIDDLEWARE_USER, 64102};
inline const User STRANGER{"stranger", 64103};
inline const User ROOT{"root", 0};

class Journal;

/// A bus of type "system" that applies a policy and can distinguish users. Needs root; ends with
/// this object.
class PolicyBus {
public:
    /// The bus implementation.
    enum class Daemon { DBUS_DAEMON, DBUS_BROKER };

    /// Like Debian's system bus: names and calls are denied, signals and replies allowed.
    static const std::string USUAL_RULES;
    /// Also denies signals, and receiving anything except replies and the bus' own messages.
    static const std::string CLOSED_RULES;
    /// Like a developer's bus: everything is allowed.
    static const std::string OPEN_RULES;

    /// rules are the default policy; policyFile, if not empty, is read after them. A bus that does
    /// not start fails the running test.
    PolicyBus(Daemon daemon, const std::string& rules, const std::string& policyFile);
    ~PolicyBus();
    PolicyBus(const PolicyBus&) = delete;
    PolicyBus& operator=(const PolicyBus&) = delete;

    /// Starts a program as user, without capabilities and other groups. A program of the build is
    /// named by its file name. environment is added to the bus' address.
    std::unique_ptr<ChildProcess> Start(const User& user, const std::vector<std::string>& argv,
                                        const ChildProcess::Environment& environment = {}) const;

    /// Waits until the bus has logged at least count denied messages of sender, a unique name.
    /// Returns the number logged, which is less than count only after PATIENCE.
    size_t AwaitDenials(const std::string& sender, size_t count) const;

    /// Creates a folder that only user can access.
    std::string FolderOf(const User& user, const std::string& name) const;

    /// The folder in which started programs find the build's data beside bin/: themes, texts.
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

/// Skips the running test, with the reason, unless it runs as root. This is the only reason to
/// skip.
void SkipUnlessRoot();

/// The name of the implementation, such as "DbusDaemon", for the names of tests.
std::string NameOf(PolicyBus::Daemon daemon);
inline std::ostream& operator<<(std::ostream& out, PolicyBus::Daemon daemon) {
    return out << NameOf(daemon);
}

/// The channel's names, not taken from the product: the tests would repeat a mistake made there.
inline constexpr const char* CHANNEL_PATH = "/org/vantu/javamw/CommunicationChannel/Applist";
inline constexpr const char* CHANNEL_INTERFACE = "org.vantu.javamw.DbusCommunication";

/// A client on the bus: the program bus_actor, run as a given user. BusActorMain.cpp lists its
/// commands.
class Actor {
public:
    /// Returns once the program is connected.
    Actor(const PolicyBus& bus, const User& user, const std::vector<std::string>& commands);

    const std::string& UniqueName() const { return m_uniqueName; }

    /// Waits until the program runs "receive", which must be its last command.
    void AwaitReceiving();
    /// Ends a program that runs "receive", after every message that the bus delivered so far has
    /// arrived.
    void End();
    /// Waits for the exit. Returns all output lines except the first, with unique names replaced by
    /// the given names.
    std::vector<std::string> Lines(
        const std::vector<std::pair<std::string, std::string>>& names = {});

private:
    std::unique_ptr<ChildProcess> m_process;
    std::string m_uniqueName;
};

}  // namespace applist::test
