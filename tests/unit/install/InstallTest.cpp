// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The data files, as `cmake --install` installs them with a prefix other than the configured one.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

namespace applist::test {
namespace {

std::string ContentOf(const fs::path& file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// Copies the folder data/ of the source, as a checkout has it that only its owner can read.
void CopySource(const fs::path& to) {
    fs::copy(DATA_SOURCE_DIR, to, fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(to)) {
        if (entry.is_regular_file()) {
            fs::permissions(entry, fs::perms::owner_read | fs::perms::owner_write);
        }
    }
}

class InstalledData : public testing::Test {
protected:
    void SetUp() override {
        const fs::path source = m_scratch.path() / "data";
        CopySource(source);
        std::string script = ContentOf(DATA_BINARY_DIR "/cmake_install.cmake");
        const std::string before = std::string(DATA_SOURCE_DIR) + "/";
        for (size_t at = 0; (at = script.find(before, at)) != std::string::npos;) {
            script.replace(at, before.size(), source.string() + "/");
        }
        const std::string file = m_scratch.path() / "install.cmake";
        std::ofstream(file) << script;
        ChildProcess install({CMAKE, "-DCMAKE_INSTALL_PREFIX=/usr", "-P", file},
                             {{"DESTDIR", m_root.path()}});
        ASSERT_EQ(install.WaitForExit(), 0) << install.Errors();
    }

    /// The sorted installed paths whose file names contain part.
    std::vector<std::string> FilesNamed(const std::string& part) const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(m_root.path())) {
            if (entry.path().filename().string().find(part) != std::string::npos) {
                names.push_back("/" + fs::relative(entry.path(), m_root.path()).string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    /// The content of the file with this installed path; empty if the file does not exist.
    std::string Content(const std::string& path) const {
        return ContentOf(m_root.path().string() + path);
    }

    /// The installed files that do not have mode 644.
    std::vector<std::string> FilesOfOtherModes() const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(m_root.path())) {
            if (entry.is_regular_file() && entry.status().permissions() != fs::perms(0644)) {
                names.push_back(entry.path().string());
            }
        }
        return names;
    }

    /// Writes the text with one part replaced and returns the file's name.
    std::string Write(const std::string& name, std::string text, const std::string& part,
                      const std::string& by) const {
        const size_t found = text.find(part);
        EXPECT_NE(found, std::string::npos) << part;
        text.replace(found, part.size(), by);
        const std::string path = m_scratch.path() / name;
        std::ofstream(path) << text;
        return path;
    }

private:
    TemporaryDir m_root;
    TemporaryDir m_scratch;
};

TEST_F(InstalledData, HasABusPolicyForBothUsersAndNoneOfADeveloper) {
    const std::string path = "/usr/share/dbus-1/system.d/org.vantu.applist.conf";
    EXPECT_THAT(Content(path), HasSubstr("<policy user=\"" APPLIST_USER "\">"));
    EXPECT_THAT(Content(path), HasSubstr("<policy user=\"" APPLIST_MIDDLEWARE_USER "\">"));
    EXPECT_THAT(FilesNamed("org.vantu.applist.conf"), ElementsAre(path));
    EXPECT_THAT(FilesNamed("developer"), testing::IsEmpty());
}

TEST_F(InstalledData, HasEntriesThatStartTheProgramsOfTheirOwnPrefix) {
    const std::pair<std::string, std::string> programs[] = {
        {"org.vantu.applist", INSTALLED_BIN "/applist"},
        {"org.vantu.alert-syspopup", INSTALLED_LIBEXEC "/org.vantu.alert-syspopup"}};
    for (const auto& [id, program] : programs) {
        const std::string start = "\nExec=\"" + program + "\"";
        EXPECT_THAT(Content("/usr/share/applications/" + id + ".desktop"), HasSubstr(start + "\n"));
        EXPECT_THAT(Content("/usr/share/dbus-1/services/" + id + ".service"),
                    HasSubstr(start + " --gapplication-service\n"));
    }
}

TEST_F(InstalledData, IsReadableByEveryUser) {
    EXPECT_THAT(FilesNamed(".desktop"), testing::SizeIs(2));
    EXPECT_THAT(FilesOfOtherModes(), testing::IsEmpty());
}

/// The example units, checked with systemd's own tools. scripts/try-unit starts one.
class UnitFile : public InstalledData {
protected:
    void SetUp() override {
        InstalledData::SetUp();
        m_unit = Content("/usr/share/doc/applist/examples/applist.service");
        m_prepared = Content("/usr/share/doc/applist/examples/applist-prepared.service");
    }

    /// The exit status of systemd's rating: 0 for an exposure of 1.5 or less, else 1.
    static std::optional<int> Judge(const std::string& file) {
        ChildProcess analyze(
            {"systemd-analyze", "security", "--offline=yes", "--threshold=15", "--no-pager", file});
        return analyze.WaitForExit();
    }

    /// The errors that systemd reports for the unit if the program exists.
    static std::string Complaints(const std::string& file) {
        ChildProcess analyze({"systemd-analyze", "verify", "--man=no", file});
        EXPECT_TRUE(analyze.WaitForExit().has_value());
        return analyze.Errors();
    }

    static inline const std::string EXEC = "ExecStart=\"" INSTALLED_BIN "/applist\"";
    std::string m_unit;
    std::string m_prepared;
};

TEST_F(UnitFile, IsExposedByOnePointFiveAtMost) {
    EXPECT_EQ(Judge(Write("applist.service", m_unit, "", "")), 0);
    // A single weakened setting must fail the check.
    EXPECT_EQ(Judge(Write("applist.service", m_unit, "CapabilityBoundingSet=\n", "")), 1);
}

TEST_F(UnitFile, IsUnderstoodToTheLastLine) {
    EXPECT_THAT(Complaints(Write("applist.service", m_unit, EXEC, "ExecStart=/bin/true")),
                Not(HasSubstr("applist.service")));
    EXPECT_THAT(Complaints(Write("applist.service", m_unit, EXEC,
                                 "ExecStart=/bin/true\nPrivatePeople=yes")),
                HasSubstr("applist.service"));
    EXPECT_THAT(Complaints(Write("prepared.service", m_prepared, EXEC, "ExecStart=/bin/true")),
                Not(HasSubstr("prepared.service")));
}

TEST_F(UnitFile, OfAPreparedProcessStartsItAgain) {
    EXPECT_THAT(m_prepared, HasSubstr("\n" + EXEC + " --prepare\nRestart=always\n"));
}

TEST_F(UnitFile, RunsTheProgramAsTheUserOfTheBusPolicy) {
    EXPECT_THAT(m_unit, HasSubstr("\n" + EXEC + "\n"));
    EXPECT_THAT(m_unit, HasSubstr("\nUser=" APPLIST_USER "\n"));
}

// The group of calls for services does not contain them.
TEST_F(UnitFile, AllowsTheCallsWithWhichTheProgramLocksItself) {
    EXPECT_THAT(m_unit, HasSubstr("\nSystemCallFilter=landlock_create_ruleset landlock_add_rule "
                                  "landlock_restrict_self seccomp\n"));
}

}  // namespace
}  // namespace applist::test
