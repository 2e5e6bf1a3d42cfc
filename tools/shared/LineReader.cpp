// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "shared/LineReader.h"

#include <array>
#include <cerrno>
#include <unistd.h>

namespace applist::tools {

std::vector<std::string_view> LinesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

void LineReader::Resume() {
    m_source = WhenReadable(m_file, [this](GIOCondition) { Read(); });
}

void LineReader::Read() {
    std::array<char, 4096> buffer{};
    const ssize_t size = read(m_file, buffer.data(), buffer.size());
    // Not errors: the source calls again when there is something to read.
    if (size < 0 && (errno == EINTR || errno == EAGAIN)) {
        return;
    }
    m_pending.append(buffer.data(), size > 0 ? static_cast<size_t>(size) : 0);
    for (size_t end = 0; (end = m_pending.find('\n')) != std::string::npos;) {
        const std::string line = m_pending.substr(0, end);
        m_pending.erase(0, end + 1);
        m_listener.line(line);
    }
    if (size <= 0) {
        // Released first, because a descriptor at its end stays readable and would call again.
        m_source.Release();
        // The last line may lack its line end.
        const std::string last = std::exchange(m_pending, {});
        if (!last.empty()) {
            m_listener.line(last);
        }
        m_listener.end();
    }
}

}  // namespace applist::tools
