// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "feed/ItemText.h"

#include <glib.h>
#include <map>
#include <utility>

namespace applist::sim {
namespace {

/// Reads line after line into items; ids are unique.
class ItemTextReader {
public:
    /// Empty on success, otherwise what is wrong with the line.
    std::string Read(std::string_view line) {
        ++m_line;
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.empty() || line.starts_with('#')) {
            return {};
        }
        if (g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr) == FALSE) {
            return "not UTF-8";
        }
        const size_t tab = line.find('\t');
        if (tab == std::string_view::npos) {
            return "no tab between id and name";
        }
        return Add(std::string(line.substr(0, tab)), std::string(line.substr(tab + 1)));
    }

    size_t line() const { return m_line; }
    Items& items() { return m_items; }

private:
    std::string Add(std::string id, std::string name) {
        if (id.empty()) {
            return "empty id";
        }
        const auto [known, isNew] = m_lineOfId.try_emplace(id, m_line);
        if (!isNew) {
            return "id '" + id + "' is already in line " + std::to_string(known->second);
        }
        m_items.push_back({std::move(id), std::move(name)});
        return {};
    }

    size_t m_line = 0;
    Items m_items;
    std::map<std::string, size_t> m_lineOfId;
};

}  // namespace

Result<Items> ParseItemText(std::string_view text) {
    ItemTextReader reader;
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string error = reader.Read(text.substr(0, end));
        if (!error.empty()) {
            return Result<Items>::Failure(std::to_string(reader.line()) + ": " + error);
        }
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return std::move(reader.items());
}

}  // namespace applist::sim
