// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace applist::test {

/// The list and its calls as docs/protocol.md describes them, written without the program's code,
/// to compare the program with.
class ExpectedList {
public:
    struct Item {
        std::string name;
        std::string id;
        /// Distinguishes items with the same id; 0 is the item of an empty selection.
        int number = 0;
    };
    enum Event { CHANGED = 1, SELECTED = 2, CLICKED = 3 };

    /// Executes one call and returns its reply.
    std::string Call(uint32_t function, std::string_view payload);
    /// The viewer selects the row after the selected one (direction 1) or before it (-1).
    void Step(int direction);
    /// The viewer selects a row, or presses OK on it.
    void Select(const Item& item);
    void Click() { m_events.push_back(CLICKED); }

    const std::vector<Item>& rows() const { return m_rows; }
    const Item& selection() const { return m_selection; }
    /// True if the selected item itself has a row.
    bool SelectionHasARow() const;
    /// The events since the last call, oldest first.
    std::vector<Event> TakeEvents() { return std::exchange(m_events, {}); }

private:
    using Items = std::vector<Item>;

    static std::string WireForm(const Item& item);
    /// Removes one item from the start of bytes. An incomplete item removes all bytes.
    std::optional<Item> Take(std::string_view& bytes);
    static Items::iterator Find(Items& items, const std::string& id);

    void Add(std::string_view payload);
    void AddAtEnd(std::string_view payload);
    void Remove(const std::string& id);
    void Modify(const std::string& oldId, const Item& replacement);
    void Clear();
    void SelectAndTell(const Item& item);

    Items m_rows;
    /// The items that calls created, also those that are not listed because their id already was.
    Items m_created;
    Item m_selection;
    std::vector<Event> m_events;
    int m_lastNumber = 0;
};

}  // namespace applist::test
