// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The whole program after it has locked itself.
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <unistd.h>

#include <gmock/gmock.h>
#include <sys/syscall.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using sim::Function;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// The error of reading a file in a locked thread.
int ReadError() {
    const bool landlock = syscall(SYS_landlock_create_ruleset, nullptr, 0, 1) > 0;
    return landlock ? EACCES : 0;
}

/// A set without a session bus, as a television has.
class ALockedList : public FaultTest {
protected:
    explicit ALockedList(const ChildProcess::Environment& changes = {{"DBUS_SESSION_BUS_ADDRESS",
                                                                      std::nullopt}})
        : FaultTest(changes) {}

    /// Shows three items. The list locks itself after the frame that this waits for.
    void Show(std::vector<std::string> wrapper) {
        wrapper.insert(wrapper.begin(), {"env", "APPLIST_LOG=info"});
        StartApplication(wrapper);
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
        ASSERT_TRUE(m_middleware->Ask(Function::AddItems, THREE));
        ASSERT_TRUE(m_set.WaitForFocusedRow());
    }
    bool Logs(const std::string& text) {
        return m_set.screen().WaitUntil([&] { return Log().find(text) != std::string::npos; });
    }
    void ShowIntruded(const std::string& lock) {
        const std::string address = *m_set.systemBus().Environment()["DBUS_SYSTEM_BUS_ADDRESS"];
        const size_t path = address.find('/');
        // The leak checker needs ptrace.
        Show({"env", "ASAN_OPTIONS=detect_leaks=0:verify_asan_link_order=0", "APPLIST_LOCK=" + lock,
              "LD_PRELOAD=" INTRUDER, "INTRUDER_FILE=" + m_set.WriteFile("file", "text"),
              "INTRUDER_SOCKET=" + address.substr(path, address.find(',') - path)});
    }
    /// The error codes of the intruder's attempts in this thread of the program.
    std::vector<int> Attempts(pid_t thread) {
        const size_t before = Log().size();
        syscall(SYS_tgkill, application().pid(), thread, SIGRTMAX);
        EXPECT_TRUE(m_set.screen().WaitUntil(
            [&] { return Log().find("execute", before) != std::string::npos; }));
        std::istringstream log(Log().substr(before));
        std::vector<int> errors;
        std::string word;
        for (int error = 0; log >> word >> word >> error;) {
            errors.push_back(error);
        }
        return errors;
    }
    std::vector<pid_t> OtherThreads() {
        std::vector<pid_t> threads;
        const pid_t main = application().pid();
        for (const auto& entry :
             std::filesystem::directory_iterator("/proc/" + std::to_string(main) + "/task")) {
            threads.push_back(std::stoi(entry.path().filename()));
        }
        std::erase(threads, main);
        return threads;
    }

    std::unique_ptr<DrivenMiddleware> m_middleware;
};

TEST_F(ALockedList, CannotReadWriteConnectOrExecute) {
    ASSERT_NO_FATAL_FAILURE(ShowIntruded("on"));
    ASSERT_TRUE(Logs("Locked after the first frame"));
    EXPECT_THAT(Attempts(application().pid()),
                ElementsAre(ReadError(), EPERM, EPERM, EPERM, EPERM));
    ExpectList(*m_middleware, THREE);
    ExpectCleanEnd();
}

// They were running before the lock, so they may still read files.
TEST_F(ALockedList, CannotWriteConnectOrExecuteInTheLibrariesThreads) {
    ASSERT_NO_FATAL_FAILURE(ShowIntruded("on"));
    ASSERT_TRUE(Logs("Locked after the first frame"));
    const auto threads = OtherThreads();
    ASSERT_FALSE(threads.empty());
    EXPECT_THAT(Attempts(threads.front()), ElementsAre(0, EPERM, EPERM, EPERM, EPERM));
}

// Shows that the attempts above can succeed.
TEST_F(ALockedList, CanDoAllOfItIfTheSetSwitchesTheLockOff) {
    ASSERT_NO_FATAL_FAILURE(ShowIntruded("off"));
    EXPECT_THAT(Log(), Not(HasSubstr("ocked")));
    application().Signal(SIGRTMAX);
    // It has become another program, which ends at once.
    EXPECT_EQ(application().WaitForExit(), 0);
    EXPECT_THAT(Log(), HasSubstr("intruder: read 0\nintruder: write 0\nintruder: network 0\n"
                                 "intruder: connect 0\n"));
}

// The engine that draws in memory represents a graphics chip, which a test machine may lack.
TEST_F(ALockedList, IsNotLockedIfTheToolkitDrawsWithAnUntestedEngine) {
    StartApplication({"env", "APPLIST_LOG=info", "APPLIST_LOCK=on", "ELM_ENGINE=buffer"});
    EXPECT_TRUE(Logs("Not locked: the toolkit draws with buffer"));
}

class AKernelWithoutTheLock : public ALockedList {};

TEST_F(AKernelWithoutTheLock, ShowsTheListAndSaysSo) {
    for (const auto& [missing, line] : std::vector<std::pair<std::string, std::string>>{
             {"landlock_create_ruleset",
              "files: not restricted, Function not implemented; system calls: restricted"},
             {"landlock_create_ruleset,seccomp",
              "files: not restricted, Function not implemented; system calls: not restricted, "
              "Function not implemented"},
             {"prctl", "The kernel cannot restrict the program: Function not implemented"}}) {
        SCOPED_TRACE(missing);
        ASSERT_NO_FATAL_FAILURE(
            Show({"strace", "-D", "-f", "-qq", "-o", "/dev/null", "-E", "APPLIST_LOCK=on", "-E",
                  "ASAN_OPTIONS=detect_leaks=0", "-e", "trace=" + missing, "-e",
                  "inject=" + missing + ":error=ENOSYS"}));
        EXPECT_TRUE(Logs(line)) << Log();
        ExpectCleanEnd();
    }
}

/// Fonts in a folder that only Fontconfig's configuration names, and those for Japanese in the
/// system's.
class FontsOfASet {
protected:
    FontsOfASet() {
        for (const char* font : {"NotoSans-Regular.ttf", "NotoSansThai-Regular.ttf"}) {
            std::filesystem::copy(std::string("/usr/share/fonts/truetype/noto/") + font,
                                  m_folder.path());
        }
        std::ofstream(Configuration())
            << "<fontconfig><dir>" << m_folder.path().string()
            << "</dir><dir>/usr/share/fonts/opentype/noto</dir></fontconfig>";
    }
    std::string Configuration() const { return m_folder.path() / "fonts.conf"; }

private:
    TemporaryDir m_folder;
};

/// A list whose first frame has only Latin letters.
class NamesInOtherScripts : private FontsOfASet, public ALockedList {
protected:
    NamesInOtherScripts()
        : ALockedList(
              {{"DBUS_SESSION_BUS_ADDRESS", std::nullopt}, {"FONTCONFIG_FILE", Configuration()}}) {}

    void ShowNames(const std::string& lock) {
        Show({"env", "APPLIST_LOCK=" + lock});
        ASSERT_TRUE(m_middleware->Ask(Function::AddItems, {{"d", "ไทย"}, {"e", "日本語"}}));
    }
};

TEST_F(NamesInOtherScripts, LookTheSameWithTheLock) {
    ASSERT_NO_FATAL_FAILURE(ShowNames("off"));
    AtRest(GaugeOf(*m_middleware));
    const Picture unlocked = m_set.screen().Grab();
    ExpectCleanEnd();
    ASSERT_NO_FATAL_FAILURE(ShowNames("on"));
    EXPECT_TRUE(
        m_set.screen().WaitUntil([&] { return m_set.screen().Grab().pixels == unlocked.pixels; }));
}

}  // namespace
}  // namespace applist::test
