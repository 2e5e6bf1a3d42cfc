// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "GlibHandles.h"

namespace applist::tools {

/// Returns the lines of text without their line ends. The last line may lack its line end. The
/// lines point into text.
std::vector<std::string_view> LinesOf(std::string_view text);

/// Reads the lines of a file, a pipe or a terminal as they arrive, on the default main context.
class LineReader {
public:
    struct Listener {
        std::function<void(const std::string& line)> line;  ///< Without its line end.
        std::function<void()> end;  ///< Called once, at the end of the input.
    };

    /// file is a descriptor that must outlive this object. Nothing is read before Resume().
    LineReader(int file, Listener listener) : m_file(file), m_listener(std::move(listener)) {}

    void Resume();
    /// Stops reading. Must not be called from a callback.
    void Pause() { m_source.Release(); }

private:
    void Read();

    int m_file;
    Listener m_listener;
    Registration m_source;
    std::string m_pending;  ///< An incomplete line.
};

}  // namespace applist::tools
