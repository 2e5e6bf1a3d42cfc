// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/PolicyBus.h"

#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <regex>
#include <sstream>
#include <string>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace applist::test {

/// The journal of a bus broker: a datagram socket whose messages are read as they arrive.
///
/// A writer blocks when net.unix.max_dgram_qlen messages are pending (10 by default), so a separate
/// thread reads them at all times.
class Journal {
public:
    /// Binds the socket to path; a failure fails the running test.
    explicit Journal(const std::string& path);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// Waits until condition holds for the log so far, whose lines are "FIELD=text"; true iff it
    /// does within PATIENCE.
    bool WaitUntil(const std::function<bool(const std::string& log)>& condition);

private:
    void Read();

    int m_socket;
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::string m_log;
    std::thread m_reader;
};

Journal::Journal(const std::string& path)
    : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0)
        << path << ": " << std::strerror(errno);
    m_reader = std::thread([this] { Read(); });
}

Journal::~Journal() {
    // Wakes the reader with an empty read.
    shutdown(m_socket, SHUT_RD);
    m_reader.join();
    close(m_socket);
}

bool Journal::WaitUntil(const std::function<bool(const std::string& log)>& condition) {
    std::unique_lock lock(m_mutex);
    return m_arrived.wait_for(lock, PATIENCE, [&] { return condition(m_log); });
}

void Journal::Read() {
    std::array<char, 65536> message{};
    ssize_t size = 0;
    while ((size = recv(m_socket, message.data(), message.size(), 0)) > 0) {
        const std::lock_guard lock(m_mutex);
        m_log.append(message.data(), static_cast<size_t>(size));
        m_arrived.notify_all();
    }
}

namespace {

namespace fs = std::filesystem;

constexpr const char* ADDRESS_VARIABLE = "DBUS_SYSTEM_BUS_ADDRESS";

// The program runs in its own mount namespace, so other processes do not see its mounts. Arguments:
// pairs of source and mount point, "--" and the program.
constexpr const char* MOUNT_AND_RUN =
    R"(while [ "$1" != -- ]; do mount --bind "$1" "$2" || exit 126; shift 2; done; shift; exec "$@")";

std::vector<std::string> WithMounts(const std::vector<std::string>& mounts,
                                    const std::vector<std::string>& argv) {
    std::vector<std::string> command{"unshare", "--mount", "sh", "-c", MOUNT_AND_RUN, "sh"};
    command.insert(command.end(), mounts.begin(), mounts.end());
    command.emplace_back("--");
    command.insert(command.end(), argv.begin(), argv.end());
    return command;
}

// True iff line is the account of one of the test's users, or has the same name.
bool IsOurs(const std::string& line) {
    for (const User* user : {&APPLICATION_USER, &MIDDLEWARE_USER, &STRANGER}) {
        if (line.rfind(user->name + ":", 0) == 0) {
            return true;
        }
    }
    return false;
}

// Counts the lines in which dbus-daemon or dbus-broker report a denied message of sender.
size_t CountDenials(const std::string& log, const std::string& sender) {
    const std::regex denial(R"((Rejected|denied)\b.*\W)" + sender + R"((\W|$))");
    std::istringstream lines(log);
    size_t count = 0;
    for (std::string line; std::getline(lines, line);) {
        count += std::regex_search(line, denial) ? 1U : 0U;
    }
    return count;
}

// A policy that denies names and calls and allows what is needed to be on the bus. What is true of
// signals and received messages follows.
std::string RulesWith(const std::string& rules) {
    return R"(
    <allow user="*"/>
    <deny own="*"/>
    <deny send_type="method_call"/>
    <allow send_requested_reply="true" send_type="method_return"/>
    <allow send_requested_reply="true" send_type="error"/>
    <allow receive_type="method_return"/>
    <allow receive_type="error"/>
    <allow send_destination="org.freedesktop.DBus" send_interface="org.freedesktop.DBus"/>
)" + rules;
}

std::vector<std::string> CommandLine(const std::vector<std::string>& commands) {
    std::vector<std::string> argv{"bus_actor"};
    argv.insert(argv.end(), commands.begin(), commands.end());
    return argv;
}

void Replace(std::string& text, const std::string& what, const std::string& by) {
    // Unique names are matched with the blanks around them, so that :1.1 is not found in :1.10.
    const size_t found = (text + " ").find(" " + what + " ");
    if (found != std::string::npos) {
        text.replace(found + 1, what.size(), by);
    }
}

}  // namespace

const std::string PolicyBus::USUAL_RULES = RulesWith(R"(
    <allow send_type="signal"/>
    <allow receive_type="method_call"/>
    <allow receive_type="signal"/>
)");

const std::string PolicyBus::CLOSED_RULES = RulesWith(R"(
    <deny send_type="signal"/>
    <deny receive_type="method_call"/>
    <deny receive_type="signal"/>
    <allow receive_type="signal" receive_sender="org.freedesktop.DBus"/>
)");

const std::string PolicyBus::OPEN_RULES = R"(
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*"/>
    <allow send_type="signal"/>
    <allow receive_sender="*"/>
)";

PolicyBus::PolicyBus(Daemon daemon, const std::string& rules, const std::string& policyFile) {
    fs::permissions(m_folder.path(), static_cast<fs::perms>(0755));
    fs::create_directory(Path("built"));
    fs::create_directory(Path("tests"));
    WriteAccounts();
    WriteConfiguration(rules, policyFile);
    if (daemon == Daemon::DBUS_DAEMON) {
        StartDaemon();
    } else {
        StartBroker();
    }
}

void PolicyBus::WriteAccounts() const {
    std::ofstream accounts(Path("passwd"));
    std::ifstream real("/etc/passwd");
    for (std::string line; std::getline(real, line);) {
        if (!IsOurs(line)) {
            accounts << line << '\n';
        }
    }
    for (const User* user : {&APPLICATION_USER, &MIDDLEWARE_USER, &STRANGER}) {
        accounts << user->name << ":x:" << user->id << ":" << user->id << "::/:/bin/false\n";
    }
}

void PolicyBus::WriteConfiguration(const std::string& rules, const std::string& policyFile) const {
    std::ofstream(Path("bus.conf"))
        << R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>unix:path=)"
        << Path("bus") << R"(</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">)"
        << rules << "</policy>\n"
        << (policyFile.empty() ? "" : "<include>" + policyFile + "</include>\n")
        << "</busconfig>\n";
}

void PolicyBus::StartDaemon() {
    m_daemon = std::make_unique<ChildProcess>(
        WithMounts({Path("passwd"), "/etc/passwd"},
                   {"dbus-daemon", "--config-file=" + Path("bus.conf"), "--nofork", "--nopidfile",
                    "--nosyslog", "--print-address=1"}));
    // The daemon prints the address when it listens.
    EXPECT_TRUE(m_daemon->WaitForText("guid=")) << "dbus-daemon: " << m_daemon->Errors();
}

// The broker's launcher expects what process 1 passes to a service: a listening socket, whose first
// connection starts the broker, and a journal.
void PolicyBus::StartBroker() {
    fs::create_directories(Path("run/systemd/journal"));
    m_journal = std::make_unique<Journal>(Path("run/systemd/journal/socket"));
    m_daemon = std::make_unique<ChildProcess>(WithMounts(
        {Path("passwd"), "/etc/passwd", Path("run"), "/run"},
        {"systemd-socket-activate", "--listen=" + Path("bus"),
         "--setenv=" + std::string(ADDRESS_VARIABLE) + "=unix:path=" + Path("bus"),
         "dbus-broker-launch", "--scope", "system", "--config-file=" + Path("bus.conf")}));
    EXPECT_TRUE(m_daemon->WaitForText("Listening on")) << "dbus-broker: " << m_daemon->Errors();
    fs::permissions(Path("bus"), fs::perms::all);
}

std::unique_ptr<ChildProcess> PolicyBus::Start(const User& user,
                                               const std::vector<std::string>& argv,
                                               const ChildProcess::Environment& environment) const {
    // The build tree may be in a folder that other users cannot read.
    const std::vector<std::string> mounts{BuiltProgram(".."), Path("built"), TEST_PROGRAMS,
                                          Path("tests")};
    const std::string id = std::to_string(user.id);
    std::vector<std::string> command{"setpriv",        "--reuid", id,
                                     "--regid",        id,        "--clear-groups",
                                     "--bounding-set", "-all",    "--no-new-privs"};
    command.insert(command.end(), argv.begin(), argv.end());
    ChildProcess::Environment changes = environment;
    changes.emplace(ADDRESS_VARIABLE, "unix:path=" + Path("bus"));
    changes["PATH"] = Path("built/bin") + ":" + Path("tests") + ":" + std::getenv("PATH");
    return std::make_unique<ChildProcess>(WithMounts(mounts, command), changes);
}

size_t PolicyBus::AwaitDenials(const std::string& sender, size_t count) const {
    size_t found = 0;
    const auto enough = [&](const std::string& log) {
        found = CountDenials(log, sender);
        return found >= count;
    };
    if (m_journal) {
        m_journal->WaitUntil(enough);
    } else {
        m_daemon->WaitUntil([&] { return enough(m_daemon->Errors()); });
    }
    return found;
}

std::string PolicyBus::FolderOf(const User& user, const std::string& name) const {
    std::string path = Path(user.name + "-" + name);
    fs::create_directory(path);
    fs::permissions(path, fs::perms::owner_all);
    EXPECT_EQ(chown(path.c_str(), user.id, user.id), 0) << path << ": " << std::strerror(errno);
    return path;
}

void SkipUnlessRoot() {
    if (geteuid() != 0) {
        GTEST_SKIP() << "NOT TESTED: programs of several users can be started by root only";
    }
}

std::string NameOf(PolicyBus::Daemon daemon) {
    return daemon == PolicyBus::Daemon::DBUS_DAEMON ? "DbusDaemon" : "DbusBroker";
}

PolicyBus::~PolicyBus() = default;

Actor::Actor(const PolicyBus& bus, const User& user, const std::vector<std::string>& commands)
    : m_process(bus.Start(user, CommandLine(commands))) {
    const std::string& output = m_process->Output();
    EXPECT_TRUE(m_process->WaitUntil([&] { return output.find('\n') != std::string::npos; }))
        << user.name << ": " << m_process->Errors();
    std::istringstream(output) >> m_uniqueName >> m_uniqueName;
}

void Actor::AwaitReceiving() {
    EXPECT_TRUE(m_process->WaitForText("receiving\n")) << m_process->Errors();
}

void Actor::End() {
    m_process->Signal(SIGTERM);
}

std::vector<std::string> Actor::Lines(
    const std::vector<std::pair<std::string, std::string>>& names) {
    EXPECT_EQ(m_process->WaitForExit(), 0) << m_process->Errors();
    std::istringstream output(m_process->Output());
    std::vector<std::string> lines;
    std::string line;
    std::getline(output, line);
    while (std::getline(output, line)) {
        for (const auto& [uniqueName, name] : names) {
            Replace(line, uniqueName, name);
        }
        lines.push_back(line);
    }
    return lines;
}

}  // namespace applist::test
