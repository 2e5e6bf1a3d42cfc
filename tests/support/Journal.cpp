// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Journal.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "support/ChildProcess.h"

namespace applist::test {

Journal::Journal(const std::string& path)
    : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof address.sun_path - 1);
    EXPECT_EQ(bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0)
        << path << ": " << std::strerror(errno);
    m_reader = std::thread([this] { Read(); });
}

Journal::~Journal() {
    // Wakes the reader with an empty read.
    shutdown(m_socket, SHUT_RD);
    m_reader.join();
    close(m_socket);
}

bool Journal::WaitUntil(const std::function<bool(const std::string& log)>& condition) {
    std::unique_lock lock(m_mutex);
    return m_arrived.wait_for(lock, PATIENCE, [&] { return condition(m_log); });
}

void Journal::Read() {
    std::array<char, 65536> message{};
    ssize_t size = 0;
    while ((size = recv(m_socket, message.data(), message.size(), 0)) > 0) {
        const std::lock_guard lock(m_mutex);
        m_log.append(message.data(), static_cast<size_t>(size));
        m_arrived.notify_all();
    }
}

}  // namespace applist::test
