// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace applist::desktop {

/// The folders that a locked program may still use; each includes everything below it. Paths that
/// do not exist are ignored.
struct Folders {
    std::vector<std::string> readable;
    /// Files can be created, written and removed, but not read, run or linked to another folder.
    std::vector<std::string> writable;
};

/// Restricts the calling thread, and the threads that it starts later, to these folders,
/// permanently. The kernel (Landlock) does not restrict threads that are already running. Files
/// that are open stay usable. Returns 0, or the error code if the kernel does not offer this.
/// REQUIRES: the process cannot gain privileges (PR_SET_NO_NEW_PRIVS).
int RestrictFiles(const Folders& folders);

}  // namespace applist::desktop
