// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace applist::desktop {

/// Maps keys of keyboards and receivers to keys of the remote control. A key has the name that the
/// display gives it, such as "XF86Select", or "Keycode-360" if the keymap does not name it.
/// docs/settings.md lists the built-in table and the names of the remote control's keys.
class KeyTable {
public:
    using Entries = std::map<std::string, const char*, std::less<>>;

    /// The built-in table.
    KeyTable();

    /// Adds the lines "KEY=NAME" of content, which replace entries for the same key. A key that
    /// gets its own name is removed from the table. Returns one text for each line that is wrong,
    /// "line NUMBER: PROBLEM"; the other lines take effect.
    std::vector<std::string> Add(std::string_view content);

    /// Returns the remote control's name for key, or null if key keeps its name. The result is
    /// static.
    const char* Find(std::string_view key) const;
    const Entries& All() const { return m_entries; }

private:
    /// Returns the problem of the line, or an empty string.
    std::string AddLine(std::string_view line);

    Entries m_entries;
};

/// A key table and the problems of its file. Each problem starts with the path of the file.
struct KeyTableReading {
    KeyTable table;
    std::vector<std::string> problems;
};

/// Reads the set's own entries from the file at path into the built-in table. Without the file the
/// result is the built-in table; a file that cannot be read is a problem. Any thread.
KeyTableReading ReadKeyTable(const std::string& path);

}  // namespace applist::desktop
