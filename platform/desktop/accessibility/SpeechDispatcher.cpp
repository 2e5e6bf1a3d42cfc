// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Speaks with speech-dispatcher over its protocol SSIP. Each command is sent when the previous one
// has been answered, because the text of a message is sent as it is: a service that refuses a
// message would read its text as commands.
#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <string_view>
#include <unistd.h>
#include <utility>

#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/un.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "accessibility/Voice.h"

namespace applist::desktop {
namespace {

constexpr guint REPLY_SECONDS = 3;
constexpr size_t LONGEST_REPLY = 4096;
constexpr std::string_view LINE_END = "\r\n";

// The same places as those of speech-dispatcher's library. Addresses on the network are not
// supported.
std::string SocketPath() {
    constexpr std::string_view UNIX = "unix_socket:";
    const char* address = std::getenv("SPEECHD_ADDRESS");
    if (address != nullptr && *address != '\0') {
        const std::string_view text = address;
        return std::string(text.starts_with(UNIX) ? text.substr(UNIX.size()) : "");
    }
    const char* folder = std::getenv("XDG_RUNTIME_DIR");
    return folder != nullptr ? std::string(folder) + "/speech-dispatcher/speechd.sock" : "";
}

// Returns a socket, or -1 with errno. A Unix socket connects at once or not at all.
int ConnectTo(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof address.sun_path) {
        errno = EINVAL;
        return -1;
    }
    path.copy(address.sun_path, path.size());
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket >= 0 &&
        connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        const int error = errno;
        close(socket);
        errno = error;
        return -1;
    }
    return socket;
}

// Returns text as one line that does not end the message.
std::string Line(std::string text) {
    constexpr unsigned char FIRST_PRINTABLE = 0x20;
    std::replace_if(
        text.begin(), text.end(),
        [](char letter) { return static_cast<unsigned char>(letter) < FIRST_PRINTABLE; }, ' ');
    return text.starts_with('.') ? "." + text : text;
}

class SpeechDispatcher : public Voice {
public:
    explicit SpeechDispatcher(const std::string& language);
    ~SpeechDispatcher() override { Disconnect(); }
    SpeechDispatcher(const SpeechDispatcher&) = delete;
    SpeechDispatcher& operator=(const SpeechDispatcher&) = delete;
    SpeechDispatcher(SpeechDispatcher&&) = delete;
    SpeechDispatcher& operator=(SpeechDispatcher&&) = delete;

    void Say(const std::string& text) override { Queue({"SPEAK", text}); }
    void Stop() override;
    /// Called when the service has sent replies or closed the connection.
    void Receive();
    /// Called when a reply is late.
    void NoReply();

private:
    struct Command {
        std::string words;
        /// The message's text, for SPEAK only.
        std::string text;
    };
    void Queue(Command command);
    void SendNext();
    void Send(const std::string& line);
    void Take(const std::string& reply);
    void Fail(const std::string& reason);
    void Disconnect();
    void StopTimer();

    const std::string m_path = SocketPath();
    int m_socket = ConnectTo(m_path);
    guint m_watch = 0;
    /// Set while a reply is outstanding.
    guint m_timer = 0;
    std::string m_received;
    std::deque<Command> m_queue;
    /// The text of the outstanding SPEAK.
    std::string m_text;
    /// True if a message may still be spoken.
    bool m_speaking = false;
};

gboolean OnReadable(gint, GIOCondition, gpointer voice) {
    GuardCallback([voice] { static_cast<SpeechDispatcher*>(voice)->Receive(); });
    return G_SOURCE_CONTINUE;
}

gboolean OnNoReply(gpointer voice) {
    GuardCallback([voice] { static_cast<SpeechDispatcher*>(voice)->NoReply(); });
    return G_SOURCE_CONTINUE;
}

SpeechDispatcher::SpeechDispatcher(const std::string& language) {
    if (m_socket < 0) {
        Fail(std::strerror(errno));
        return;
    }
    m_watch = g_unix_fd_add(m_socket, G_IO_IN, OnReadable, this);
    Queue({"SET SELF CLIENT_NAME applist:applist:main", {}});
    Queue({"SET SELF LANGUAGE " + language, {}});
    // Messages of this priority are spoken one after the other.
    Queue({"SET SELF PRIORITY MESSAGE", {}});
}

void SpeechDispatcher::Stop() {
    // The commands of the start stay in the queue.
    std::erase_if(m_queue, [](const Command& command) { return !command.text.empty(); });
    if (std::exchange(m_speaking, false)) {
        Queue({"CANCEL SELF", {}});
    }
}

void SpeechDispatcher::Queue(Command command) {
    if (m_socket >= 0) {
        m_queue.push_back(std::move(command));
        SendNext();
    }
}

void SpeechDispatcher::SendNext() {
    if (m_timer != 0 || m_queue.empty()) {
        return;
    }
    Command command = std::move(m_queue.front());
    m_queue.pop_front();
    m_text = std::move(command.text);
    m_speaking = m_speaking || !m_text.empty();
    Send(command.words);
}

// A line is much shorter than the socket's buffer, so a part of it is sent only if the service
// does not read.
void SpeechDispatcher::Send(const std::string& line) {
    const std::string bytes = line + std::string(LINE_END);
    m_timer = g_timeout_add_seconds(REPLY_SECONDS, OnNoReply, this);
    const ssize_t sent = send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent != static_cast<ssize_t>(bytes.size())) {
        Fail(sent < 0 ? std::strerror(errno) : "it does not read");
    }
}

void SpeechDispatcher::Receive() {
    std::array<char, LONGEST_REPLY> bytes{};
    const ssize_t size = recv(m_socket, bytes.data(), bytes.size(), 0);
    if (size <= 0) {
        if (size == 0 || (errno != EAGAIN && errno != EINTR)) {
            Fail(size == 0 ? "it has closed the connection" : std::strerror(errno));
        }
        return;
    }
    m_received.append(bytes.data(), static_cast<size_t>(size));
    for (size_t end = 0; (end = m_received.find(LINE_END)) != std::string::npos;) {
        const std::string reply = m_received.substr(0, end);
        m_received.erase(0, end + LINE_END.size());
        Take(reply);
    }
    if (m_received.size() > LONGEST_REPLY) {
        Fail("its reply is too long");
    }
}

// The last line of a reply has a space after its code, the others a hyphen.
void SpeechDispatcher::Take(const std::string& reply) {
    constexpr size_t CODE = 3;
    if (m_timer == 0 || (reply.size() > CODE && reply[CODE] == '-')) {
        return;
    }
    StopTimer();
    // 2xx is success. 230 asks for the text of SPEAK, which ends with a line that has only a dot.
    if (!reply.starts_with('2')) {
        Fail("it replies " + reply);
    } else if (reply.starts_with("230")) {
        Send(Line(std::exchange(m_text, {})) + std::string(LINE_END) + ".");
    } else {
        SendNext();
    }
}

// The reply may wait in the socket if this program was stopped for a while.
void SpeechDispatcher::NoReply() {
    const guint timer = m_timer;
    Receive();
    if (m_timer == timer) {
        Fail("it does not answer");
    }
}

void SpeechDispatcher::Fail(const std::string& reason) {
    LOG_ERROR("Speech is off: cannot use the speech service at '%s': %s", m_path.c_str(),
              Line(reason).c_str());
    m_speaking = false;
    m_queue.clear();
    m_received.clear();
    Disconnect();
}

void SpeechDispatcher::Disconnect() {
    StopTimer();
    if (m_watch != 0) {
        g_source_remove(std::exchange(m_watch, 0));
    }
    if (m_socket >= 0) {
        close(std::exchange(m_socket, -1));
    }
}

void SpeechDispatcher::StopTimer() {
    if (m_timer != 0) {
        g_source_remove(std::exchange(m_timer, 0));
    }
}

}  // namespace

std::unique_ptr<Voice> OpenVoice(const std::string& language) {
    return std::make_unique<SpeechDispatcher>(language);
}

// Speech may be switched on later if the service is there.
bool VoiceConnects() {
    return access(SocketPath().c_str(), F_OK) == 0;
}

}  // namespace applist::desktop
