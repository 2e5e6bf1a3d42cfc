// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace applist::sim {

/// Results in the Test Anything Protocol, version 13, line by line.
class Tap {
public:
    /// Takes each line as soon as it is true.
    using Write = std::function<void(const std::string& line)>;

    Tap(Write write, bool colours) : m_write(std::move(write)), m_colours(colours) {}

    /// First of all, with the number of points to come.
    void Plan(size_t points);
    void Pass(const std::string& description);
    void Skip(const std::string& description, const std::string& reason);
    /// where is "file:line"; seen is what happened meanwhile.
    void Fail(const std::string& description, const std::string& where, const std::string& problem,
              const std::vector<std::string>& seen);
    void Comment(const std::string& text);
    /// The last line, when not all points could be tried.
    void BailOut(const std::string& reason);

private:
    std::string Point(const char* result, const char* colour, const std::string& description);

    Write m_write;
    bool m_colours;
    size_t m_number = 0;
};

}  // namespace applist::sim
