// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace applist::test {

/// The journal of a bus broker: a datagram socket whose messages are read as they arrive.
///
/// A writer blocks when net.unix.max_dgram_qlen messages are pending (10 by default), so a separate
/// thread reads them at all times.
class Journal {
public:
    /// Binds the socket to path; a failure fails the running test.
    explicit Journal(const std::string& path);
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    /// Waits until condition holds for the log so far, whose lines are "FIELD=text"; true iff it
    /// does within PATIENCE.
    bool WaitUntil(const std::function<bool(const std::string& log)>& condition);

private:
    void Read();

    int m_socket;
    std::mutex m_mutex;
    std::condition_variable m_arrived;
    std::string m_log;
    std::thread m_reader;
};

}  // namespace applist::test
