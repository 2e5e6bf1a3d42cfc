// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "scenario/LineInput.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <glib.h>
#include <histedit.h>
#include <unistd.h>
#include <utility>

#include <glib-unix.h>
#include <sys/ioctl.h>

#include "GlibHandles.h"
#include "scenario/Statement.h"
#include "shared/Output.h"

namespace applist::sim {

size_t RowsAbove(std::string_view text, size_t columns) {
    return tools::ColumnsOf(text) / columns;
}

namespace {

constexpr int HISTORY_SIZE = 1000;
constexpr char END_OF_FILE = '\x04';
// Default action of the key while the terminal is not being read.
constexpr char END_OF_FILE_AHEAD = '\0';

// The editor works in characters. If the locale has only bytes, ids and names are taken as UTF-8.
void UseCharacters() {
    if (std::setlocale(LC_CTYPE, "") == nullptr || MB_CUR_MAX == 1) {
        static_cast<void>(std::setlocale(LC_CTYPE, "C.UTF-8"));
    }
}

size_t ScreenWidth() {
    winsize size{};
    // Some terminals, such as serial lines, report a width of 0.
    const bool known = ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return known ? size.ws_col : 80;
}

bool HasCursorKeys() {
    const char* terminal = std::getenv("TERM");
    return terminal != nullptr && *terminal != '\0' && std::string_view(terminal) != "dumb";
}

// Returns the file for the history in the state folder of XDG. Empty if the folder cannot be
// created.
std::string HistoryFile() {
    g_autofree char* folder = g_build_filename(g_get_user_state_dir(), "javamw-sim", nullptr);
    // Only the user may read the history.
    const bool there = g_mkdir_with_parents(folder, 0700) == 0;
    return there ? std::string(folder) + "/history" : std::string();
}

/// Reads lines from a pipe or a file.
class StreamInput : public LineInput {
public:
    StreamInput(int file, Listener listener) : m_reader(file, std::move(listener)) {}

    void Resume(const std::string& /*prompt*/) override { m_reader.Resume(); }
    void Pause() override { m_reader.Pause(); }
    bool Print(const std::string& line) override { return tools::WriteLine(line); }
    bool Discard() override { return false; }

private:
    tools::LineReader m_reader;
};

/// Reads lines from a terminal, with editing, history and completion. Output appears above the line
/// that is being typed, which is redrawn.
class EditorInput : public LineInput {
public:
    EditorInput(Listener listener, Complete complete)
        : m_listener(std::move(listener)),
          m_complete(std::move(complete)),
          m_historyFile(HistoryFile()),
          m_history(history_init(), &history_end),
          m_editor(nullptr, &el_end) {
        // The locale must be set before the editor begins.
        UseCharacters();
        m_editor.reset(el_init("javamw-sim", stdin, stdout, stderr));
        SetUp();
        LoadHistory();
    }
    ~EditorInput() override {
        // Restores the terminal before the history is written. The qualified name avoids a virtual
        // call in a destructor.
        EditorInput::Pause();
        SaveHistory();
    }
    EditorInput(const EditorInput&) = delete;
    EditorInput& operator=(const EditorInput&) = delete;

    void Resume(const std::string& prompt) override {
        m_prompt = prompt;
        m_editing = true;
        el_set(m_editor.get(), EL_UNBUFFERED, 1);
        m_source =
            WhenReadable(STDIN_FILENO, [this](GIOCondition condition) { OnInput(condition); });
    }

    void Pause() override {
        m_source.Release();
        if (std::exchange(m_editing, false)) {
            el_set(m_editor.get(), EL_UNBUFFERED, 0);
        }
    }

    bool Print(const std::string& line) override {
        if (!m_editing) {
            return tools::WriteLine(line);
        }
        Erase();
        const bool written = tools::WriteLine(line);
        el_set(m_editor.get(), EL_REFRESH);
        return written;
    }

    bool Discard() override {
        const LineInfo* line = el_line(m_editor.get());
        const bool typed = m_editing && line->lastchar > line->buffer;
        if (typed) {
            Pause();
            static_cast<void>(tools::WriteLine("^C"));
            Resume(m_prompt);
        }
        return typed;
    }

private:
    void SetUp() {
        EditLine* editor = m_editor.get();
        el_set(editor, EL_CLIENTDATA, this);
        el_set(editor, EL_PROMPT, &EditorInput::cb_Prompt);
        el_set(editor, EL_EDITOR, "emacs");
        el_set(editor, EL_HIST, history, m_history.get());
        // Uses wide characters, because the library leaks the copies that it makes of narrow ones.
        el_wset(editor, EL_ADDFN, L"complete-word", L"Complete the word",
                &EditorInput::cb_Complete);
        el_set(editor, EL_BIND, "^I", "complete-word", nullptr);
        el_set(editor, EL_BIND, "^@", "em-delete-or-list", nullptr);
        el_set(editor, EL_BIND, "^R", "em-inc-search-prev", nullptr);
        // Reads the user's own editrc last, so that its key bindings override these.
        el_source(editor, nullptr);
        m_resized = RunOn(g_unix_signal_source_new(SIGWINCH), [editor] {
            el_resize(editor);
            return true;
        });
    }

    void LoadHistory() {
        HistEvent event{};
        history(m_history.get(), &event, H_SETSIZE, HISTORY_SIZE);
        history(m_history.get(), &event, H_SETUNIQUE, 1);
        if (!m_historyFile.empty()) {
            history(m_history.get(), &event, H_LOAD, m_historyFile.c_str());
        }
    }

    // If several shells end, the history of the last one is kept.
    void SaveHistory() const {
        HistEvent event{};
        if (!m_historyFile.empty()) {
            history(m_history.get(), &event, H_SAVE, m_historyFile.c_str());
        }
    }

    void Remember(const std::string& line) {
        HistEvent event{};
        if (line.find_first_not_of(" \t") != std::string::npos) {
            history(m_history.get(), &event, H_ENTER, line.c_str());
        }
    }

    void OnInput(GIOCondition condition) {
        if ((condition & (G_IO_HUP | G_IO_ERR)) != 0) {
            End();
        } else {
            ReadKey();
        }
    }

    // In unbuffered mode the editor returns the line after each key, and with a line end when it is
    // complete. A line that only contains the end-of-file key means the end.
    void ReadKey() {
        int count = 0;
        const char* text = el_gets(m_editor.get(), &count);
        if (text == nullptr || count <= 0) {
            return;
        }
        const char last = text[count - 1];
        if (count == 1 && (last == END_OF_FILE || last == END_OF_FILE_AHEAD)) {
            End();
        } else if (last == '\n' || last == '\r') {
            const std::string line(text, static_cast<size_t>(count - 1));
            // Released until the next Resume(), so that the statement runs before another line is
            // read.
            m_source.Release();
            Remember(line);
            m_listener.line(line);
        }
    }

    // The next output starts on a new line.
    void End() {
        m_source.Release();
        static_cast<void>(std::fputc('\n', stdout));
        m_listener.end();
    }

    void CompleteWord() {
        const LineInfo* line = el_line(m_editor.get());
        const std::string_view text(line->buffer, static_cast<size_t>(line->cursor - line->buffer));
        const auto candidates = m_complete(text);
        const std::string rest = CommonRest(candidates, LastWord(text));
        if (!rest.empty()) {
            el_insertstr(m_editor.get(), rest.c_str());
        } else if (candidates.size() > 1) {
            static_cast<void>(Print(tools::Joined(candidates, "  ")));
        } else {
            el_beep(m_editor.get());
        }
    }

    /// Removes prompt and line from the screen.
    void Erase() const {
        if (!HasCursorKeys()) {
            static_cast<void>(std::fputc('\n', stdout));
            return;
        }
        const LineInfo* line = el_line(m_editor.get());
        const std::string before =
            m_prompt + std::string(line->buffer, static_cast<size_t>(line->cursor - line->buffer));
        // A long line wraps, so the cursor may be below the row in which the prompt begins.
        if (const size_t rows = RowsAbove(before, ScreenWidth()); rows > 0) {
            static_cast<void>(std::fprintf(stdout, "\033[%zuA", rows));
        }
        static_cast<void>(std::fputs("\r\033[J", stdout));
    }

    static char* cb_Prompt(EditLine* editor) noexcept {
        EditorInput* self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        return self->m_prompt.data();
    }

    static unsigned char cb_Complete(EditLine* editor, int /*key*/) noexcept {
        EditorInput* self = nullptr;
        el_get(editor, EL_CLIENTDATA, &self);
        self->CompleteWord();
        return CC_REFRESH;
    }

    Listener m_listener;
    Complete m_complete;
    std::string m_historyFile;  ///< Empty for none.
    std::string m_prompt;
    std::unique_ptr<History, void (*)(History*)> m_history;
    std::unique_ptr<EditLine, void (*)(EditLine*)> m_editor;
    bool m_editing = false;
    Registration m_source;
    Registration m_resized;
};

}  // namespace

std::unique_ptr<LineInput> MakeStreamInput(int file, LineInput::Listener listener) {
    return std::make_unique<StreamInput>(file, std::move(listener));
}

std::unique_ptr<LineInput> MakeEditorInput(LineInput::Listener listener, Complete complete) {
    return std::make_unique<EditorInput>(std::move(listener), std::move(complete));
}

}  // namespace applist::sim
