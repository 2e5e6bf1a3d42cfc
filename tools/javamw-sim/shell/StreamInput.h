// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <utility>

#include "bus/GioHandles.h"
#include "shell/LineInput.h"

namespace applist::sim {

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
