// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

namespace applist::desktop {

/// Holds an exclusive lock between processes, and between threads, from construction to
/// destruction. The system releases it when its holder is killed.
class [[nodiscard]] FileLock {
public:
    /// Waits for the lock on the file at path, which is created if need be and never removed:
    /// who removed it would let two holders in.
    explicit FileLock(const std::string& path);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock& operator=(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// False when the file could not be opened or locked; errno says why.
    bool IsHeld() const { return m_fd >= 0; }

private:
    int m_fd = -1;
};

}  // namespace applist::desktop
