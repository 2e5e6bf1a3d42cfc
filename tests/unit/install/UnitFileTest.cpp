// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Checks the example unit with systemd's own tools. scripts/try-unit starts it.
#include <fstream>
#include <optional>

#include <gmock/gmock.h>

#include "support/ChildProcess.h"
#include "unit/install/InstalledData.h"

namespace applist::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class UnitFile : public InstalledData {
protected:
    void SetUp() override {
        InstalledData::SetUp();
        m_unit = Content(UNIT);
        ASSERT_THAT(m_unit, HasSubstr("\n[Service]\n")) << UNIT;
    }
    const std::string& unit() const { return m_unit; }
    /// Writes the unit with one text replaced and returns the file's name.
    std::string Write(const std::string& what, const std::string& by) const {
        std::string unit = m_unit;
        const size_t found = unit.find(what);
        EXPECT_NE(found, std::string::npos) << what;
        unit.replace(found, what.size(), by);
        std::ofstream(Scratch() + "/applist.service") << unit;
        return Scratch() + "/applist.service";
    }
    /// The exit status of systemd's rating: 0 for an exposure of 1.5 or less, else 1.
    static std::optional<int> Judge(const std::string& file) {
        ChildProcess analyze(
            {"systemd-analyze", "security", "--offline=yes", "--threshold=15", "--no-pager", file});
        return analyze.WaitForExit();
    }
    /// The errors that systemd reports for the unit when the program exists.
    static std::string Complaints(const std::string& file) {
        ChildProcess analyze({"systemd-analyze", "verify", "--man=no", file});
        EXPECT_TRUE(analyze.WaitForExit().has_value());
        return analyze.Errors();
    }
    static inline const std::string UNIT = "/usr/share/doc/applist/examples/applist.service";
    static inline const std::string EXEC = "ExecStart=\"" INSTALLED_BIN "/applist\"";

private:
    std::string m_unit;
};

TEST_F(UnitFile, IsExposedByOnePointFiveAtMost) {
    EXPECT_EQ(Judge(Write("", "")), 0);
    // A single weakened setting must fail the check.
    EXPECT_EQ(Judge(Write("CapabilityBoundingSet=\n", "")), 1);
}

TEST_F(UnitFile, IsUnderstoodToTheLastLine) {
    EXPECT_THAT(Complaints(Write(EXEC, "ExecStart=/bin/true")), Not(HasSubstr("applist.service")));
    EXPECT_THAT(Complaints(Write(EXEC, "ExecStart=/bin/true\nPrivatePeople=yes")),
                HasSubstr("applist.service"));
}

TEST_F(UnitFile, OfAPreparedProcessIsUnderstoodAndStartsItAgain) {
    std::string prepared = Content("/usr/share/doc/applist/examples/applist-prepared.service");
    EXPECT_THAT(prepared, HasSubstr("\n" + EXEC + " --prepare\nRestart=always\n"));
    prepared.replace(prepared.find(EXEC), EXEC.size(), "ExecStart=/bin/true");
    std::ofstream(Scratch() + "/prepared.service") << prepared;
    EXPECT_THAT(Complaints(Scratch() + "/prepared.service"), Not(HasSubstr("prepared.service")));
}

TEST_F(UnitFile, RunsTheProgramAsTheUserOfTheBusPolicy) {
    EXPECT_THAT(unit(), HasSubstr("\n" + EXEC + "\n"));
    EXPECT_THAT(unit(), HasSubstr("\nUser=" APPLIST_USER "\n"));
}

// The group of calls for services does not contain them.
TEST_F(UnitFile, AllowsTheCallsWithWhichTheProgramLocksItself) {
    EXPECT_THAT(unit(), HasSubstr("\nSystemCallFilter=landlock_create_ruleset landlock_add_rule "
                                  "landlock_restrict_self seccomp\n"));
}

}  // namespace
}  // namespace applist::test
