// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <condition_variable>
#include <filesystem>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "support/ChildProcess.h"

namespace applist::test {

/// A speech service that speaks SSIP on a Unix socket and records what it receives. Serves one
/// client after the other in its own thread.
class SpeechService {
public:
    enum class Manner {
        ANSWERS,
        /// Accepts connections and never replies.
        HANGS,
        /// Replies to SPEAK with an error.
        REFUSES,
        /// Closes the connection at the first SPEAK.
        DIES
    };

    explicit SpeechService(const std::filesystem::path& socket, Manner manner = Manner::ANSWERS);
    ~SpeechService();
    SpeechService(const SpeechService&) = delete;
    SpeechService& operator=(const SpeechService&) = delete;

    /// The value of SPEECHD_ADDRESS for its clients.
    std::string Address() const { return "unix_socket:" + m_path.string(); }
    /// The commands so far without SPEAK, and the texts as "say TEXT". All have been answered,
    /// unless it hangs.
    std::vector<std::string> Received() const;
    /// The texts only.
    std::vector<std::string> Utterances() const;
    /// Waits until the condition holds, checked after each line; true iff it does in time.
    bool WaitUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds patience = PATIENCE);
    /// Waits until the last text is this one.
    bool WaitForLast(const std::string& utterance);

private:
    void Serve(const std::stop_token& stop);
    bool Take(int client, const std::string& line);
    void Record(const std::string& entry, int client, const std::string& reply);

    std::filesystem::path m_path;
    Manner m_manner;
    int m_listener;
    int m_wake[2] = {-1, -1};
    bool m_inText = false;
    std::string m_text;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::vector<std::string> m_received;
    std::jthread m_thread;
};

}  // namespace applist::test
