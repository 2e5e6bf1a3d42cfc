// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What of the buses' files goes to a set.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include <gmock/gmock.h>

#include "support/ChildProcess.h"
#include "support/TemporaryDir.h"

namespace applist::test {
namespace {

namespace fs = std::filesystem;

std::string Content(const fs::path& file) {
    std::ifstream in(file);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// The folder that holds what `cmake --install` puts into the prefix /usr.
class InstalledData : public testing::Test {
protected:
    void SetUp() override {
        ChildProcess install(
            {CMAKE, "-DCMAKE_INSTALL_PREFIX=/usr", "-P", DATA_BINARY_DIR "/cmake_install.cmake"},
            {{"DESTDIR", m_folder.path()}});
        ASSERT_EQ(install.WaitForExit(), 0) << install.Errors();
    }
    std::vector<std::string> FilesNamed(const std::string& part) const {
        std::vector<std::string> names;
        for (const auto& entry : fs::recursive_directory_iterator(m_folder.path())) {
            if (entry.path().filename().string().find(part) != std::string::npos) {
                names.push_back("/" + fs::relative(entry.path(), m_folder.path()).string());
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }
    fs::path At(const std::string& path) const { return m_folder.path().string() + path; }

private:
    TemporaryDir m_folder;
};

TEST_F(InstalledData, HasThePolicyWhereTheSystemBusLooks) {
    const std::string policy = Content(At("/usr/share/dbus-1/system.d/org.vantu.applist.conf"));
    EXPECT_THAT(policy, testing::HasSubstr("<policy user=\"" APPLIST_USER "\">"));
    EXPECT_THAT(policy, testing::HasSubstr("<policy user=\"" APPLIST_MIDDLEWARE_USER "\">"));
    EXPECT_EQ(policy, Content(BUS_POLICY));
}

// Those allow everybody everything.
TEST_F(InstalledData, HasNoBusOfADeveloper) {
    EXPECT_THAT(FilesNamed("developer"), testing::IsEmpty());
    EXPECT_THAT(FilesNamed("applist.conf"), testing::SizeIs(1));
}

}  // namespace
}  // namespace applist::test
