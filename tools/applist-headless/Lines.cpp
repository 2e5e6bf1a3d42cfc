// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "Lines.h"

#include <array>
#include <cerrno>
#include <unistd.h>
#include <utility>

#include <glib-unix.h>

#include "CallbackGuard.h"

namespace applist::headless {

Lines::Lines(int fd, std::function<void(const std::string&, int)> onLine,
             std::function<void()> onEnd)
    : m_fd(fd), m_onLine(std::move(onLine)), m_onEnd(std::move(onEnd)) {
    const auto onReadable = [](int, GIOCondition, void* data) -> gboolean {
        auto* lines = static_cast<Lines*>(data);
        const bool more = GuardCallback(false, [lines] { return lines->ReadSome(); });
        if (!more) {
            lines->m_source = 0;
        }
        return more ? G_SOURCE_CONTINUE : G_SOURCE_REMOVE;
    };
    m_source = g_unix_fd_add(fd, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
                             onReadable, this);
}

Lines::~Lines() {
    if (m_source != 0) {
        g_source_remove(m_source);
    }
}

bool Lines::ReadSome() {
    std::array<char, 4096> buffer;
    const ssize_t size = read(m_fd, buffer.data(), buffer.size());
    if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
        return true;
    }
    if (size > 0) {
        m_text.append(buffer.data(), static_cast<size_t>(size));
        EmitLines();
        return true;
    }
    if (!m_text.empty()) {
        m_text += '\n';
        EmitLines();
    }
    m_onEnd();
    return false;
}

void Lines::EmitLines() {
    size_t begin = 0;
    for (size_t end = m_text.find('\n'); end != std::string::npos; end = m_text.find('\n', begin)) {
        m_onLine(m_text.substr(begin, end - begin), ++m_number);
        begin = end + 1;
    }
    m_text.erase(0, begin);
}

}  // namespace applist::headless
