// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/TemporaryDir.h"

namespace applist::test {

/// Runs `cmake --install` for the folder data/ with the prefix /usr.
class InstalledData : public testing::Test {
protected:
    void SetUp() override;
    /// The sorted installed paths whose file names contain part.
    std::vector<std::string> FilesNamed(const std::string& part) const;
    /// The content of the file with this installed path; empty if the file does not exist.
    std::string Content(const std::string& path) const;
    /// A temporary folder for the test's files.
    std::string Scratch() const { return m_scratch.path(); }

private:
    TemporaryDir m_root;
    TemporaryDir m_scratch;
};

}  // namespace applist::test
