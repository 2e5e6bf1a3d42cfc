// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/SpeechService.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <sys/socket.h>
#include <sys/un.h>

namespace applist::test {
namespace {

constexpr const char* SAY = "say ";

int Listen(const std::filesystem::path& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (bind(listener, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0 ||
        listen(listener, 1) != 0) {
        std::abort();
    }
    return listener;
}

void Reply(int client, const std::string& text) {
    static_cast<void>(send(client, (text + "\r\n").data(), text.size() + 2, MSG_NOSIGNAL));
}

}  // namespace

SpeechService::SpeechService(const std::filesystem::path& socket, Manner manner)
    : m_path(socket), m_manner(manner), m_listener(Listen(socket)) {
    if (pipe2(m_wake, O_CLOEXEC) != 0) {
        std::abort();
    }
    m_thread = std::jthread([this](const std::stop_token& stop) { Serve(stop); });
}

SpeechService::~SpeechService() {
    m_thread.request_stop();
    close(m_wake[1]);
    m_thread.join();
    close(m_wake[0]);
    close(m_listener);
    std::filesystem::remove(m_path);
}

void SpeechService::Serve(const std::stop_token& stop) {
    int client = -1;
    std::string bytes;
    while (!stop.stop_requested()) {
        std::array<pollfd, 2> events{
            {{m_wake[0], POLLIN, 0}, {client >= 0 ? client : m_listener, POLLIN, 0}}};
        poll(events.data(), events.size(), -1);
        if (events[1].revents == 0) {
            continue;
        }
        if (client < 0) {
            client = accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC);
            bytes.clear();
            m_inText = false;
            continue;
        }
        std::array<char, 4096> part{};
        const ssize_t size = read(client, part.data(), part.size());
        bool open = size > 0;
        bytes.append(part.data(), open ? static_cast<size_t>(size) : 0);
        for (size_t end = 0; open && (end = bytes.find("\r\n")) != std::string::npos;) {
            const std::string line = bytes.substr(0, end);
            bytes.erase(0, end + 2);
            open = Take(client, line);
        }
        if (!open) {
            close(client);
            client = -1;
        }
    }
    if (client >= 0) {
        close(client);
    }
}

// Returns false to close the connection.
bool SpeechService::Take(int client, const std::string& line) {
    if (m_manner == Manner::HANGS) {
        Record(line, -1, {});
    } else if (m_inText && line == ".") {
        m_inText = false;
        Record(SAY + m_text, client, "225-21\r\n225 OK MESSAGE QUEUED");
    } else if (m_inText) {
        m_text = line.starts_with('.') ? line.substr(1) : line;
    } else if (line != "SPEAK") {
        Record(line, client, "210 OK");
    } else if (m_manner == Manner::DIES) {
        return false;
    } else if (m_manner == Manner::REFUSES) {
        Reply(client, "300 ERR INTERNAL");
    } else {
        m_inText = true;
        Reply(client, "230 OK RECEIVING DATA");
    }
    return true;
}

// A client that has the reply sees the entry, and the other way round.
void SpeechService::Record(const std::string& entry, int client, const std::string& reply) {
    const std::lock_guard lock(m_mutex);
    if (client >= 0) {
        Reply(client, reply);
    }
    m_received.push_back(entry);
    m_changed.notify_all();
}

std::vector<std::string> SpeechService::Received() const {
    const std::lock_guard lock(m_mutex);
    return m_received;
}

std::vector<std::string> SpeechService::Utterances() const {
    std::vector<std::string> utterances;
    for (const std::string& entry : Received()) {
        if (entry.starts_with(SAY)) {
            utterances.push_back(entry.substr(std::string(SAY).size()));
        }
    }
    return utterances;
}

bool SpeechService::WaitUntil(const std::function<bool()>& condition,
                              std::chrono::milliseconds patience) {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    bool holds = condition();
    while (!holds && std::chrono::steady_clock::now() < deadline) {
        std::unique_lock lock(m_mutex);
        const size_t before = m_received.size();
        m_changed.wait_until(lock, deadline, [&] { return m_received.size() > before; });
        lock.unlock();
        holds = condition();
    }
    return holds;
}

bool SpeechService::WaitForLast(const std::string& utterance) {
    return WaitUntil([&] {
        const std::vector<std::string> all = Utterances();
        return !all.empty() && all.back() == utterance;
    });
}

}  // namespace applist::test
