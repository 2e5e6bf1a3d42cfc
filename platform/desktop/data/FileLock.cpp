// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

#include <sys/file.h>

namespace applist::desktop {

FileLock::FileLock(const std::string& path)
    : m_fd(open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600)) {
    while (m_fd >= 0 && flock(m_fd, LOCK_EX) != 0) {
        // A signal handler may interrupt the wait; only other errors end it.
        if (errno != EINTR) {
            // close() may overwrite errno, which IsHeld() promises to leave for the caller.
            const int reason = errno;
            close(std::exchange(m_fd, -1));
            errno = reason;
        }
    }
}

FileLock::~FileLock() {
    if (m_fd >= 0) {
        close(m_fd);
    }
}

FileLock::FileLock(FileLock&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}

FileLock& FileLock::operator=(FileLock&& other) noexcept {
    std::swap(m_fd, other.m_fd);
    return *this;
}

}  // namespace applist::desktop
