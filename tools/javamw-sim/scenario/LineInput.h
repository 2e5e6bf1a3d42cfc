// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "shared/LineReader.h"

namespace applist::sim {

/// Source of the lines of a shell, and its output.
class LineInput {
public:
    using Listener = tools::LineReader::Listener;

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

/// Returns an input from a pipe or a file. file is a descriptor that must outlive it.
std::unique_ptr<LineInput> MakeStreamInput(int file, LineInput::Listener listener);

/// Returns the number of rows between the beginning of text and the cursor at its end, on a
/// terminal with this number of columns.
size_t RowsAbove(std::string_view text, size_t columns);

/// Returns the completions of the last word of text.
using Complete = std::function<std::vector<std::string>(std::string_view text)>;

/// Returns an input from a terminal, with editing, completion and a history, which is kept in the
/// state folder of XDG. Output appears above the line that is being typed, which is redrawn.
std::unique_ptr<LineInput> MakeEditorInput(LineInput::Listener listener, Complete complete);

}  // namespace applist::sim
