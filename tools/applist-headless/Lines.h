// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <glib.h>
#include <string>

namespace applist::headless {

/// Reads lines of a file, a pipe or a terminal as they arrive, in the default main context.
class Lines {
public:
    /// Calls onLine for each line without its end, numbered from 1, including a last line without
    /// an end; then calls onEnd once. Does not close fd.
    Lines(int fd, std::function<void(const std::string&, int)> onLine, std::function<void()> onEnd);
    ~Lines();
    Lines(const Lines&) = delete;
    Lines& operator=(const Lines&) = delete;
    Lines(Lines&&) = delete;
    Lines& operator=(Lines&&) = delete;

private:
    /// Returns false at the end of the input.
    bool ReadSome();
    void EmitLines();

    int m_fd;
    std::function<void(const std::string&, int)> m_onLine;
    std::function<void()> m_onEnd;
    std::string m_text;
    int m_number = 0;
    guint m_source = 0;
};

}  // namespace applist::headless
