// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// Holds an exclusive file lock, between processes and between threads, from construction to
/// destruction. The system releases it if the holder is killed.
class [[nodiscard]] FileLock {
public:
    /// Waits for the lock on the file at path and creates the file if necessary. The file is never
    /// removed: if it were, one process could hold a lock on the removed file while another locks
    /// the new one.
    explicit FileLock(const std::string& path);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False if the file could not be opened or locked. errno then gives the reason, until the next
    /// system call.
    bool IsHeld() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

}  // namespace applist::desktop
