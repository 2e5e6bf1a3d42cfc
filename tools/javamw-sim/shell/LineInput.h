// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "link/GioHandles.h"

namespace applist::sim {

/// Where the lines of a shell come from, and where it prints.
class LineInput {
public:
    /// Whom the input tells, from the main context.
    struct Listener {
        std::function<void(const std::string& line)> line;  ///< Without its line end.
        std::function<void()> end;                          ///< No line comes any more.
    };

    LineInput() = default;
    virtual ~LineInput() = default;
    LineInput(const LineInput&) = delete;
    LineInput& operator=(const LineInput&) = delete;
    LineInput(LineInput&&) = delete;
    LineInput& operator=(LineInput&&) = delete;

    /// Lines are wanted from here on; prompt says so to a person.
    virtual void Resume(const std::string& prompt) = 0;
    /// No more for now. Not from within the listener.
    virtual void Pause() = 0;
    /// Prints a line, now or as soon as nothing is being typed. False when nobody can read it.
    virtual bool Print(const std::string& line) = 0;
    /// Drops what has been typed of a line; false if nothing has.
    virtual bool Discard() = 0;
};

/// Lines from a pipe or a file.
class StreamInput : public LineInput {
public:
    /// file is a descriptor that must outlive the input.
    StreamInput(int file, Listener listener) : m_file(file), m_listener(std::move(listener)) {}

    void Resume(const std::string& prompt) override;
    void Pause() override { m_source.Release(); }
    bool Print(const std::string& line) override;
    bool Discard() override { return false; }

private:
    void Read();
    static int cb_Readable(int file, GIOCondition, void* input) noexcept;

    int m_file;
    Listener m_listener;
    Registration m_source;
    std::string m_pending;  ///< A line that has not ended.
};

}  // namespace applist::sim
