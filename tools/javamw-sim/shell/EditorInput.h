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

/// Returns the number of terminal columns of text, which is UTF-8.
size_t ColumnsOf(std::string_view text);

/// Returns the number of rows between the beginning of text and the cursor at its end, on a
/// terminal with this number of columns.
size_t RowsAbove(std::string_view text, size_t columns);

}  // namespace applist::sim

using EditLine = struct editline;
using History = struct history;

namespace applist::sim {

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
    /// Removes prompt and line from the screen. Draw() draws them again at the cursor.
    void Erase() const;
    void Draw();
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

/// Returns the file for the history in the state folder of XDG. Empty if the folder cannot be
/// created.
std::string HistoryFile();

}  // namespace applist::sim
