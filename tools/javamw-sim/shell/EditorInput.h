// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "link/GioHandles.h"
#include "shell/LineInput.h"

namespace applist::sim {

/// How many columns of a screen the characters of text take; text is UTF-8.
size_t ColumnsOf(std::string_view text);

/// How many rows above the cursor text begins on a screen of so many columns, when the cursor is
/// right behind it.
size_t RowsAbove(std::string_view text, size_t columns);

}  // namespace applist::sim

using EditLine = struct editline;
using History = struct history;

namespace applist::sim {

/// Lines that a person types at the terminal of standard input and output, with editing, history
/// and completion. What is printed stands above the line being typed, which stays as it is.
class EditorInput : public LineInput {
public:
    /// What the word at the end of text could become.
    using Complete = std::function<std::vector<std::string>(std::string_view text)>;

    /// historyFile is read now and written at the end; empty for none.
    EditorInput(Listener listener, Complete complete, std::string historyFile);
    ~EditorInput() override;
    EditorInput(const EditorInput&) = delete;
    EditorInput& operator=(const EditorInput&) = delete;
    EditorInput(EditorInput&&) = delete;
    EditorInput& operator=(EditorInput&&) = delete;

    void Resume(const std::string& prompt) override;
    void Pause() override;
    bool Print(const std::string& line) override;
    bool Discard() override;

private:
    struct EndEditor {
        void operator()(EditLine* editor) const;
    };
    struct EndHistory {
        void operator()(History* history) const;
    };

    void SetUp();
    void LoadHistory();
    void SaveHistory() const;
    void Remember(const std::string& line);
    void OnInput(GIOCondition condition);
    void ReadKey();
    void End();
    void CompleteWord();
    /// Removes prompt and line from the screen; Draw() puts them back where the cursor then is.
    void Erase() const;
    void Draw();
    static int cb_Readable(int, GIOCondition, void* input) noexcept;
    static int cb_Resized(void* input) noexcept;
    static char* cb_Prompt(EditLine* editor) noexcept;
    static unsigned char cb_Complete(EditLine* editor, int) noexcept;

    Listener m_listener;
    Complete m_complete;
    std::string m_historyFile;
    std::string m_prompt;
    std::unique_ptr<History, EndHistory> m_history;
    std::unique_ptr<EditLine, EndEditor> m_editor;
    bool m_editing = false;
    Registration m_source;
    Registration m_resized;
};

/// Where a person's history is kept between sessions: in the state folder of XDG. Empty if that
/// cannot be made.
std::string HistoryFile();

}  // namespace applist::sim
