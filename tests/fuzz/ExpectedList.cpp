// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fuzz/ExpectedList.h"

#include <algorithm>

namespace applist::test {
namespace {

// The ids of the calls.
enum Function : uint32_t {
    SET_SELECTION = 2000,
    GET_SELECTION,
    GET_ALL_ITEMS,
    REMOVE_ALL_ITEMS,
    ADD_ITEMS,
    ADD_ITEM_AT_END,
    SET_CLICKED,
    REMOVE_ITEM,
    MODIFY_ITEM,
};

std::string WireForm(const std::string& text) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(text.size() >> shift & 0xFFU);
    }
    return bytes + text;
}

std::optional<std::string> TakeText(std::string_view& bytes) {
    if (bytes.size() < 4) {
        return std::nullopt;
    }
    size_t length = 0;
    for (unsigned i = 0; i < 4; ++i) {
        length |= size_t{static_cast<unsigned char>(bytes[i])} << 8U * i;
    }
    bytes.remove_prefix(4);
    if (length > bytes.size()) {
        return std::nullopt;
    }
    const std::string text(bytes.substr(0, length));
    bytes.remove_prefix(length);
    return text;
}

}  // namespace

std::string ExpectedList::Call(uint32_t function, std::string_view payload) {
    std::string reply;
    switch (function) {
        case SET_SELECTION:
            Select(Take(payload).value_or(Item{}));
            break;
        case GET_SELECTION:
            return WireForm(m_selection);
        case GET_ALL_ITEMS:
            for (const Item& item : m_rows) {
                reply += WireForm(item);
            }
            return reply;
        case REMOVE_ALL_ITEMS:
            Clear();
            break;
        case ADD_ITEMS:
            Add(payload);
            break;
        case ADD_ITEM_AT_END:
            AddAtEnd(payload);
            break;
        case REMOVE_ITEM:
            Remove(Take(payload).value_or(Item{}).id);
            break;
        case MODIFY_ITEM: {
            const Item old = Take(payload).value_or(Item{});
            Modify(old.id, Take(payload).value_or(Item{"", "", ++m_lastNumber}));
            break;
        }
        default:
            break;
    }
    return reply;
}

void ExpectedList::Step(int direction) {
    const auto selected = std::find_if(m_rows.begin(), m_rows.end(), [this](const Item& item) {
        return item.number == m_selection.number;
    });
    if (selected != m_rows.end()) {
        const auto rows = std::ssize(m_rows);
        Select(m_rows[static_cast<size_t>((selected - m_rows.begin() + rows + direction) % rows)]);
    }
}

void ExpectedList::Select(const Item& item) {
    if (item.id.empty()) {
        m_selection = {};
        return;
    }
    const auto row = Find(m_rows, item.id);
    if (row != m_rows.end() && item.id != m_selection.id) {
        SelectAndTell(*row);
    }
}

bool ExpectedList::SelectionHasARow() const {
    return std::any_of(m_rows.begin(), m_rows.end(),
                       [this](const Item& item) { return item.number == m_selection.number; });
}

std::string ExpectedList::WireForm(const Item& item) {
    return test::WireForm(item.name) + test::WireForm(item.id);
}

std::optional<ExpectedList::Item> ExpectedList::Take(std::string_view& bytes) {
    const auto name = TakeText(bytes);
    const auto id = name ? TakeText(bytes) : std::nullopt;
    if (!id) {
        bytes = {};
        return std::nullopt;
    }
    return Item{*name, *id, ++m_lastNumber};
}

ExpectedList::Items::iterator ExpectedList::Find(Items& items, const std::string& id) {
    return std::find_if(items.begin(), items.end(),
                        [&](const Item& item) { return item.id == id; });
}

void ExpectedList::Add(std::string_view payload) {
    const size_t rowsBefore = m_rows.size();
    while (const auto item = Take(payload)) {
        m_created.push_back(*item);
        if (Find(m_rows, item->id) == m_rows.end()) {
            m_rows.push_back(*item);
        }
    }
    if (m_rows.size() > rowsBefore) {
        m_events.push_back(CHANGED);
    }
    if (m_selection.id.empty() && !m_rows.empty()) {
        SelectAndTell(m_rows.front());
    }
}

void ExpectedList::AddAtEnd(std::string_view payload) {
    const Item item = Take(payload).value_or(Item{"", "", ++m_lastNumber});
    m_created.push_back(item);
    if (Find(m_rows, item.id) == m_rows.end()) {
        m_rows.push_back(item);
        m_events.push_back(CHANGED);
    }
    if (m_selection.id.empty()) {
        SelectAndTell(item);
    }
}

void ExpectedList::Remove(const std::string& id) {
    const auto created = Find(m_created, id);
    if (created == m_created.end()) {
        return;
    }
    m_created.erase(created);
    const auto row = Find(m_rows, id);
    if (row == m_rows.end()) {
        return;
    }
    const auto position = row - m_rows.begin();
    m_rows.erase(row);
    m_events.push_back(CHANGED);
    if (m_selection.id == id) {
        // The next row has taken the removed one's place.
        const auto nearest = std::min(position, std::ssize(m_rows) - 1);
        SelectAndTell(nearest >= 0 ? m_rows[static_cast<size_t>(nearest)] : Item{});
    }
}

void ExpectedList::Modify(const std::string& oldId, const Item& replacement) {
    if (Find(m_created, replacement.id) != m_created.end()) {
        Remove(oldId);
        return;
    }
    const auto created = Find(m_created, oldId);
    if (created == m_created.end()) {
        return;
    }
    *created = replacement;
    const auto row = Find(m_rows, oldId);
    if (row == m_rows.end()) {
        return;
    }
    *row = replacement;
    m_events.push_back(CHANGED);
    if (m_selection.id == oldId) {
        SelectAndTell(replacement);
    }
}

void ExpectedList::Clear() {
    m_created.clear();
    if (!m_rows.empty()) {
        m_rows.clear();
        m_events.push_back(CHANGED);
        SelectAndTell({});
    }
}

void ExpectedList::SelectAndTell(const Item& item) {
    m_selection = item;
    m_events.push_back(SELECTED);
}

}  // namespace applist::test
