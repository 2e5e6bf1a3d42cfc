// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace applist::sim {

/// Writes results in the Test Anything Protocol, version 13, line by line.
class Tap {
public:
    /// Called with each line as soon as it is known.
    using Write = std::function<void(const std::string& line)>;

    Tap(Write write, bool colours) : m_write(std::move(write)), m_colours(colours) {}

    /// Must be called first, with the number of following points.
    void Plan(size_t points);
    void Pass(const std::string& description);
    void Skip(const std::string& description, const std::string& reason);
    /// where is "file:line". seen lists the events since the previous point.
    void Fail(const std::string& description, const std::string& where, const std::string& problem,
              const std::vector<std::string>& seen);
    void Comment(const std::string& text);
    /// The last line, if some points could not be run.
    void BailOut(const std::string& reason);

private:
    std::string Point(const char* result, const char* colour, const std::string& description);

    Write m_write;
    bool m_colours;
    size_t m_number = 0;
};

}  // namespace applist::sim
