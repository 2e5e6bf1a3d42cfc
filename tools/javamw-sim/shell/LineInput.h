// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "link/GioHandles.h"

namespace applist::sim {

/// Source of the lines of a shell, and its output.
class LineInput {
public:
    /// Callbacks, run on the main context.
    struct Listener {
        std::function<void(const std::string& line)> line;  ///< Without its line end.
        std::function<void()> end;                          ///< Called at the end of the input.
    };

    LineInput() = default;
    virtual ~LineInput() = default;
    LineInput(const LineInput&) = delete;
    LineInput& operator=(const LineInput&) = delete;

    /// Starts reading lines; prompt is shown to a person.
    virtual void Resume(const std::string& prompt) = 0;
    /// Stops reading. Must not be called from a callback.
    virtual void Pause() = 0;
    /// Prints a line, if necessary once nothing is being typed. Returns false if the output cannot
    /// be written.
    virtual bool Print(const std::string& line) = 0;
    /// Drops the typed part of a line. Returns false if nothing was typed.
    virtual bool Discard() = 0;
};

/// Reads lines from a pipe or a file.
class StreamInput : public LineInput {
public:
    /// file is a descriptor that must outlive this object.
    StreamInput(int file, Listener listener) : m_file(file), m_listener(std::move(listener)) {}

    void Resume(const std::string& prompt) override;
    void Pause() override { m_source.Release(); }
    bool Print(const std::string& line) override;
    bool Discard() override { return false; }

private:
    void Read();

    int m_file;
    Listener m_listener;
    Registration m_source;
    std::string m_pending;  ///< An incomplete line.
};

}  // namespace applist::sim
