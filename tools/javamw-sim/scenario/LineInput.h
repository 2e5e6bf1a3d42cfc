// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "GlibHandles.h"
#include "shared/LineReader.h"

using EditLine = struct editline;
using History = struct history;

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

/// Reads lines from a pipe or a file.
class StreamInput : public LineInput {
public:
    /// file is a descriptor that must outlive this object.
    StreamInput(int file, Listener listener) : m_reader(file, std::move(listener)) {}

    void Resume(const std::string& /*prompt*/) override { m_reader.Resume(); }
    void Pause() override { m_reader.Pause(); }
    bool Print(const std::string& line) override;
    bool Discard() override { return false; }

private:
    tools::LineReader m_reader;
};

/// Returns the number of rows between the beginning of text and the cursor at its end, on a
/// terminal with this number of columns.
size_t RowsAbove(std::string_view text, size_t columns);

/// Reads lines from a terminal, with editing, history and completion. Output appears above the line
/// that is being typed, which is redrawn.
class EditorInput : public LineInput {
public:
    /// Returns the completions of the last word of text.
    using Complete = std::function<std::vector<std::string>(std::string_view text)>;

    /// Reads historyFile now and writes it in the destructor; empty for none.
    EditorInput(Listener listener, Complete complete, std::string historyFile);
    ~EditorInput() override;
    EditorInput(const EditorInput&) = delete;
    EditorInput& operator=(const EditorInput&) = delete;

    void Resume(const std::string& prompt) override;
    void Pause() override;
    bool Print(const std::string& line) override;
    bool Discard() override;

private:
    void SetUp();
    void LoadHistory();
    void SaveHistory() const;
    void Remember(const std::string& line);
    void OnInput(GIOCondition condition);
    void ReadKey();
    void End();
    void CompleteWord();
    /// Removes prompt and line from the screen. Draw() draws them again at the cursor.
    void Erase() const;
    void Draw();
    static char* cb_Prompt(EditLine* editor) noexcept;
    static unsigned char cb_Complete(EditLine* editor, int) noexcept;

    Listener m_listener;
    Complete m_complete;
    std::string m_historyFile;
    std::string m_prompt;
    std::unique_ptr<History, void (*)(History*)> m_history;
    std::unique_ptr<EditLine, void (*)(EditLine*)> m_editor;
    bool m_editing = false;
    Registration m_source;
    Registration m_resized;
};

/// Returns the file for the history in the state folder of XDG. Empty if the folder cannot be
/// created.
std::string HistoryFile();

}  // namespace applist::sim
