// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Faults of the machine: the clock is set, the disk is full.
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
    /// Shows the list with clocks that run faster by the given factor, which does not apply to the
    /// step.
    void Show(const std::string& speed) {
        std::vector<std::string> wrapper = ClockAtSpeed(speed, CLOCK_STEP);
        wrapper.insert(wrapper.end(), {"APPLIST_LOG=debug", "APPLIST_CLOCK_STEP=" + m_step});
        StartApplication(wrapper);
        m_middleware = NewMiddleware();
        ASSERT_TRUE(m_middleware->AwaitApplication());
        ASSERT_TRUE(m_middleware->Ask(sim::Function::AddItems, THREE));
    }

    /// Sets the wall clock off by this many seconds. The application has mapped the file, so it is
    /// changed in place.
    void SetWall(int64_t seconds) const {
        std::fstream(m_step, std::ios::binary | std::ios::in | std::ios::out)
            .write(reinterpret_cast<const char*>(&seconds), sizeof seconds);
    }

    const std::string m_step = m_set.WriteFile("step", std::string(sizeof(int64_t), '\0'));
    std::unique_ptr<DrivenMiddleware> m_middleware;
};

// The list stays open and works.
TEST_F(TheClock, MayBeSetADayAhead) {
    ASSERT_NO_FATAL_FAILURE(Show("1"));
    SetWall(DAY_S);
    ExpectList(*m_middleware, THREE);
    ExpectCleanEnd();
}

TEST_F(TheClock, MayBeSetADayBackAndTheListStillClosesItself) {
    ASSERT_NO_FATAL_FAILURE(Show("50"));
    SetWall(-DAY_S);
    EXPECT_EQ(application().WaitForExit(), 0);
    EXPECT_THAT(Log(), HasSubstr("Executed timer function"));
}

using TheDisk = FaultTest;

// Mounts a disk of one page, which the settings fill and which only this shell and the tool ($0)
// see. $1 is the set's data folder, $2 a file for the copy.
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
    // No partial file is left.
    EXPECT_EQ(shell.Output(), "2\nsettings.ini\nsettings.ini.lock\n");
}

// A file size limit of 0 makes each write fail, as a full disk does, but only for platformctl. The
// test can therefore show the list with the settings that are still stored.
TEST_F(TheDisk, MayBeFullWhenASettingIsChanged) {
    ChildProcess tool(
        {"sh", "-c", "trap '' XFSZ; ulimit -f 0; exec \"$0\" \"$@\"", BuiltProgram("platformctl"),
         "set", "memory/tv-viewer/data_service", "int", "0"},
        m_set.Environment());
    EXPECT_EQ(tool.WaitForExit(), 1);
    EXPECT_THAT(tool.Errors(), HasSubstr("File too large"));
    // The old setting, with which the list is offered, is still stored.
    ASSERT_NO_FATAL_FAILURE(ShowThree());
    const auto middleware = NewMiddleware();
    ASSERT_TRUE(middleware->AwaitApplication());
    ExpectList(*middleware, THREE);
    ExpectCleanEnd();
    EXPECT_EQ(m_set.Configure({"set", "memory/tv-viewer/data_service", "int", "0"}), 0);
}

}  // namespace
}  // namespace applist::test
