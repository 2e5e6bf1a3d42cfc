// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The lock's two parts, each in a child process, which keeps them for good.
#include <atomic>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <sys/wait.h>

#include "lock/CallFilter.h"
#include "lock/FileRules.h"
#include "support/TemporaryDir.h"

namespace applist::desktop {
namespace {

using test::TemporaryDir;

/// Runs body in a child process and returns its result, an error code.
int InChild(const std::function<int()>& body) {
    const pid_t child = fork();
    if (child == 0) {
        _exit(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ? errno : body());
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

int ErrorOf(long result) {
    return result < 0 ? errno : 0;
}

/// The error code of call in a process with the filter.
int Filtered(const std::function<long()>& call, const CallNeeds& needs = {}) {
    return InChild([&] {
        const int refused = RefuseCalls(needs);
        return refused != 0 ? refused : ErrorOf(call());
    });
}

int Open(const std::filesystem::path& path, int flags) {
    return open(path.c_str(), flags | O_CLOEXEC, 0600);
}

long Map(int protection) {
    return mmap(nullptr, 4096, protection, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0) == MAP_FAILED ? -1
                                                                                             : 0;
}

long ConnectToNothing() {
    const sockaddr_un address{AF_UNIX, "/nothing"};
    return connect(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0),
                   reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

class TheCallFilter : public testing::Test {
protected:
    const TemporaryDir m_folder;
    const std::filesystem::path m_file = m_folder.path() / "file";

    void SetUp() override { std::ofstream(m_file) << "text"; }
};

TEST_F(TheCallFilter, RefusesNewProcessesButNotNewThreads) {
    EXPECT_EQ(Filtered([] { return execl("/bin/true", "true", nullptr); }), EPERM);
    EXPECT_EQ(Filtered([] { return fork(); }), EPERM);
    EXPECT_EQ(Filtered([] {
                  std::thread([] {}).join();
                  return 0;
              }),
              0);
}

TEST_F(TheCallFilter, RefusesExecutableMemory) {
    EXPECT_EQ(Filtered([] { return Map(PROT_READ | PROT_EXEC); }), EPERM);
    EXPECT_EQ(Filtered([] { return Map(PROT_READ | PROT_WRITE); }), 0);
}

TEST_F(TheCallFilter, RefusesToWriteFiles) {
    EXPECT_EQ(Filtered([&] { return Open(m_file, O_RDONLY); }), 0);
    EXPECT_EQ(Filtered([&] { return Open(m_file, O_WRONLY); }), EPERM);
    const auto created = m_folder.path() / "new";
    EXPECT_EQ(Filtered([&] { return Open(created, O_RDONLY | O_CREAT); }), EPERM);
    EXPECT_EQ(Filtered([&] { return Open(created, O_RDWR | O_CREAT | O_EXCL); }), EPERM);
    EXPECT_EQ(Filtered([&] { return unlink(m_file.c_str()); }), EPERM);
}

TEST_F(TheCallFilter, AllowsNewFilesWhereTheDisplayNeedsThem) {
    const CallNeeds wayland{false, true};
    const auto created = m_folder.path() / "new";
    EXPECT_EQ(Filtered([&] { return Open(created, O_RDWR | O_CREAT | O_EXCL); }, wayland), 0);
    EXPECT_EQ(Filtered([&] { return unlink(created.c_str()); }, wayland), 0);
    EXPECT_EQ(Filtered([&] { return Open(m_file, O_RDWR); }, wayland), EPERM);
}

TEST_F(TheCallFilter, RefusesConnectionsUnlessAScreenReaderNeedsThem) {
    const auto connection = [](int family) {
        return [family] { return socket(family, SOCK_STREAM | SOCK_CLOEXEC, 0); };
    };
    EXPECT_EQ(Filtered(connection(AF_UNIX)), EPERM);
    EXPECT_EQ(Filtered(connection(AF_INET)), EPERM);
    EXPECT_EQ(Filtered(ConnectToNothing), EPERM);
    EXPECT_EQ(Filtered(connection(AF_UNIX), {true, false}), 0);
    EXPECT_EQ(Filtered(connection(AF_INET), {true, false}), EPERM);
    EXPECT_EQ(Filtered(ConnectToNothing, {true, false}), ENOENT);
}

TEST_F(TheCallFilter, RefusesSignalsToOtherProcesses) {
    EXPECT_EQ(Filtered([] { return kill(getppid(), 0); }), EPERM);
    EXPECT_EQ(Filtered([] { return kill(getpid(), 0); }), 0);
}

TEST_F(TheCallFilter, RefusesToTypeIntoTheTerminal) {
    EXPECT_EQ(Filtered([] { return ioctl(-1, TIOCSTI, "x"); }), EPERM);
    EXPECT_EQ(Filtered([] { return ioctl(-1, FIONREAD, nullptr); }), EBADF);
}

// The C library tries these two first and then uses calls whose arguments the filter can read.
TEST_F(TheCallFilter, ReportsCallsWithUnreadableArgumentsAsMissing) {
    EXPECT_EQ(Filtered([] { return syscall(SYS_clone3, nullptr, 0); }), ENOSYS);
    EXPECT_EQ(Filtered([] { return syscall(SYS_openat2, -1, nullptr, nullptr, 0); }), ENOSYS);
}

TEST_F(TheCallFilter, AppliesToThreadsThatAreAlreadyRunning) {
    EXPECT_EQ(InChild([this] {
                  std::atomic<bool> filtered = false;
                  int error = 0;
                  std::thread thread([&] {
                      filtered.wait(false);
                      error = ErrorOf(Open(m_file, O_WRONLY));
                  });
                  const int refused = RefuseCalls({});
                  filtered = true;
                  filtered.notify_one();
                  thread.join();
                  return refused != 0 ? refused : error;
              }),
              EPERM);
}

class TheFileRules : public testing::Test {
protected:
    std::string Folder(const char* name) {
        const auto folder = m_top.path() / name;
        std::filesystem::create_directory(folder);
        std::ofstream(folder / "file") << "text";
        return folder;
    }
    /// The error code of call under the rules.
    int Restricted(const std::function<long()>& call) {
        return InChild([&] {
            const int error = RestrictFiles({{m_readable, "/does/not/exist"}, {m_writable}});
            return error != 0 ? error : ErrorOf(call());
        });
    }
    void SetUp() override {
        if (syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) < 1) {
            GTEST_SKIP() << "the kernel does not have Landlock";
        }
    }

    TemporaryDir m_top;
    const std::string m_readable = Folder("readable");
    const std::string m_writable = Folder("writable");
    const std::string m_other = Folder("other");
};

TEST_F(TheFileRules, AllowReadingInTheNamedFoldersOnly) {
    EXPECT_EQ(Restricted([this] { return Open(m_readable + "/file", O_RDONLY); }), 0);
    EXPECT_EQ(Restricted([this] { return Open(m_readable, O_RDONLY | O_DIRECTORY); }), 0);
    EXPECT_EQ(Restricted([this] { return Open(m_other + "/file", O_RDONLY); }), EACCES);
    EXPECT_EQ(Restricted([] { return Open("/", O_RDONLY | O_DIRECTORY); }), EACCES);
}

TEST_F(TheFileRules, AllowWritingInTheNamedFoldersOnly) {
    EXPECT_EQ(Restricted([this] { return Open(m_writable + "/new", O_RDWR | O_CREAT); }), 0);
    EXPECT_EQ(Restricted([this] { return unlink((m_writable + "/file").c_str()); }), 0);
    EXPECT_EQ(Restricted([this] { return Open(m_readable + "/file", O_WRONLY); }), EACCES);
    EXPECT_EQ(Restricted([this] { return Open(m_readable + "/new", O_RDWR | O_CREAT); }), EACCES);
}

TEST_F(TheFileRules, DoNotAllowPrograms) {
    EXPECT_EQ(Restricted([] { return execl("/bin/true", "true", nullptr); }), EACCES);
}

}  // namespace
}  // namespace applist::desktop
