// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "data/KeyTable.h"

#include <algorithm>
#include <array>
#include <glib.h>

namespace applist::desktop {
namespace {

// The keys that the application and the toolkit's list handle.
constexpr std::array<const char*, 9> REMOTE_CONTROL{
    "Up", "Down", "Left", "Right", "Return", "Prior", "Next", "XF86Back", "XF86Exit",
};

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos
               ? std::string_view()
               : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Removes the first line from text and returns it.
std::string_view TakeLine(std::string_view& text) {
    const size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

}  // namespace

// Debian's keymaps name the kernel's KEY_EXIT "XF86Close". They do not name KEY_OK and KEY_SELECT,
// so the table lists their key codes, 360 and 361 (including X's offset of 8). X11 does not deliver
// codes above 255, so these two work on Wayland only. KEY_EXIT is also listed by its key code, 182,
// because other keymaps name it XF86Exit, a name that the toolkit does not know.
KeyTable::KeyTable()
    : m_entries{
          {"Escape", "XF86Back"},    {"F10", "XF86Exit"},        {"Keycode-182", "XF86Exit"},
          {"XF86Close", "XF86Exit"}, {"KP_Enter", "Return"},     {"Select", "Return"},
          {"XF86OK", "Return"},      {"XF86Select", "Return"},   {"Keycode-360", "Return"},
          {"Keycode-361", "Return"}, {"XF86ChannelUp", "Prior"}, {"XF86ChannelDown", "Next"},
      } {}

std::vector<std::string> KeyTable::Add(std::string_view content) {
    std::vector<std::string> problems;
    for (int number = 1; !content.empty(); ++number) {
        const std::string problem = AddLine(Trimmed(TakeLine(content)));
        if (!problem.empty()) {
            problems.push_back("line " + std::to_string(number) + ": " + problem);
        }
    }
    return problems;
}

std::string KeyTable::AddLine(std::string_view line) {
    if (line.empty() || line.front() == '#' || line == "[keys]") {
        return {};
    }
    const size_t sign = line.find('=');
    const std::string key(Trimmed(line.substr(0, sign)));
    if (sign == std::string_view::npos || key.empty()) {
        return "not KEY=NAME";
    }
    const std::string_view name = Trimmed(line.substr(sign + 1));
    // insert_or_assign() stores the pointer from REMOTE_CONTROL, because the entries must outlive
    // content.
    const auto* const known = std::find(REMOTE_CONTROL.begin(), REMOTE_CONTROL.end(), name);
    if (known != REMOTE_CONTROL.end() && *known != key) {
        m_entries.insert_or_assign(key, *known);
    } else if (name == key) {
        m_entries.erase(key);
    } else {
        return "not a key of the remote control: " + std::string(name);
    }
    return {};
}

const char* KeyTable::Find(std::string_view key) const {
    const auto found = m_entries.find(key);
    return found != m_entries.end() ? found->second : nullptr;
}

KeyTableReading ReadKeyTable(const std::string& path) {
    KeyTableReading reading;
    g_autofree char* content = nullptr;
    gsize length = 0;
    g_autoptr(GError) error = nullptr;
    if (g_file_get_contents(path.c_str(), &content, &length, &error) != FALSE) {
        reading.problems = reading.table.Add({content, length});
    } else if (!g_error_matches(error, G_FILE_ERROR, G_FILE_ERROR_NOENT)) {
        reading.problems.push_back(std::string("cannot be read: ") + error->message);
    }
    for (std::string& problem : reading.problems) {
        problem.insert(0, path + ": ");
    }
    return reading;
}

}  // namespace applist::desktop
