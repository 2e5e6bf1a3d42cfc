// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What the machine below can do to a list: a clock that is set, a disk that is full.
#include <cstdint>
#include <fstream>
#include <unistd.h>

#include <gmock/gmock.h>

#include "e2e/faults/FaultTest.h"

namespace applist::test {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr int64_t DAY_S = int64_t{24} * 60 * 60;

class TheClock : public FaultTest {
protected:
    /// Sets the application's wall clock so many seconds off, at once.
    void Set(int64_t seconds) {
        std::ofstream(m_step, std::ios::binary)
            .write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
    }

    /// The list with this clock; it runs so many times as fast.
    void Show(const std::string& speed) {
        StartApplication({"env", "APPLIST_LOG=debug", std::string("LD_PRELOAD=") + CLOCK_STEP,
                          "APPLIST_CLOCK_STEP=" + m_step, "faketime", "-f", "+0 x" + speed});
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
        ASSERT_TRUE(m_middleware->Ask(sim::Function::AddItems, THREE));
    }

    const std::string m_step = m_set.WriteFile("step", std::string(sizeof(int64_t), '\0'));
    std::unique_ptr<DrivenMiddleware> m_middleware;
};

// The list stays, and goes on.
TEST_F(TheClock, MayBeSetADayAhead) {
    ASSERT_NO_FATAL_FAILURE(Show("1"));
    Set(DAY_S);
    ExpectList(*m_middleware, THREE);
    ExpectCleanEnd();
}

TEST_F(TheClock, MayBeSetADayBackAndTheListStillClosesItself) {
    ASSERT_NO_FATAL_FAILURE(Show("50"));
    Set(-DAY_S);
    EXPECT_EQ(application().WaitForExit(), 0);
    EXPECT_THAT(Log(), HasSubstr("Executed timer function"));
}

using TheDisk = FaultTest;

// A disk of one page, which the settings take: seen by this shell and the tool, $0, alone. $1 is
// where the set keeps its data, $2 a file for the copy.
constexpr const char* ON_A_FULL_DISK = R"(
    set -e
    cp "$1/memory/settings.ini" "$2"
    mount -t tmpfs -o size=4k full "$1/memory"
    cp "$2" "$1/memory/settings.ini"
    "$0" set memory/tv-viewer/data_service int 0 && exit 3
    "$0" get memory/tv-viewer/data_service
    ls -A "$1/memory")";

TEST_F(TheDisk, MayBeFullAndKeepsTheSettingsThatItHas) {
    const std::string root = m_set.Environment().at("APPLIST_PLATFORM_ROOT").value_or("");
    std::vector<std::string> command{"unshare", "--mount"};
    if (geteuid() != 0) {
        command.emplace_back("--map-root-user");
    }
    command.insert(command.end(), {"sh", "-c", ON_A_FULL_DISK, BuiltProgram("platformctl"), root,
                                   m_set.WriteFile("copy", "")});
    ChildProcess shell(command, m_set.Environment());
    EXPECT_EQ(shell.WaitForExit(), 0) << shell.Errors();
    EXPECT_THAT(shell.Errors(),
                StartsWith("platformctl: " + root + "/memory/settings.ini: cannot be written: "));
    EXPECT_THAT(shell.Errors(), EndsWith("No space left on device\n"));
    // Nor is half a file left behind.
    EXPECT_EQ(shell.Output(), "2\nsettings.ini\nsettings.ini.lock\n");
}

// No file may grow here: the same to a program that writes, and the list can be shown beside it.
TEST_F(TheDisk, MayBeFullWhenASettingIsChanged) {
    ChildProcess tool(
        {"sh", "-c", "trap '' XFSZ; ulimit -f 0; exec \"$0\" \"$@\"", BuiltProgram("platformctl"),
         "set", "memory/tv-viewer/data_service", "int", "0"},
        m_set.Environment());
    EXPECT_EQ(tool.WaitForExit(), 1);
    EXPECT_THAT(tool.Errors(), HasSubstr("File too large"));
    // The old setting, which offers the list, is still there.
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    const auto middleware = NewMiddleware();
    ASSERT_TRUE(middleware->AwaitApplication());
    ExpectList(*middleware, THREE);
    ExpectCleanEnd();
    EXPECT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
}

}  // namespace
}  // namespace applist::test
