// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "support/TemporaryDir.h"

namespace applist::test {

/// What `cmake --install` puts of the folder data/ on a set with the prefix /usr.
class InstalledData : public testing::Test {
protected:
    void SetUp() override;
    /// The installed paths with part in their file names, sorted.
    std::vector<std::string> FilesNamed(const std::string& part) const;
    /// The content of the file with this installed path; empty when there is none.
    std::string Content(const std::string& path) const;
    /// A folder to write to.
    std::string Scratch() const { return m_scratch.path(); }

private:
    TemporaryDir m_root;
    TemporaryDir m_scratch;
};

}  // namespace applist::test
