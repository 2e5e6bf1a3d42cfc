// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iterator>
#include <random>
#include <string>

#include "fuzz/ExpectedList.h"
#include "link/Protocol.h"

namespace applist::test {

/// A list on which the same calls are made as on the application's.
class ReferenceList {
public:
    void Apply(sim::Function function, const sim::Items& items) {
        sim::Bytes frame = sim::EncodeCall(function, items);
        frame.resize(frame.size() - sizeof(uint32_t));
        m_list.Call(static_cast<uint32_t>(function), {frame.data(), frame.size()});
    }
    sim::Items items() const {
        sim::Items items;
        for (const ExpectedList::Item& row : m_list.rows()) {
            items.push_back({row.id, row.name});
        }
        return items;
    }
    /// Name and id are empty if nothing is selected.
    sim::Item selection() const { return {m_list.selection().id, m_list.selection().name}; }

private:
    ExpectedList m_list;
};

/// Generates random calls. They share a small set of ids, so that calls often refer to the same
/// item.
class RandomCalls {
public:
    explicit RandomCalls(size_t seed) : m_random(seed) {}

    sim::Function NextFunction() {
        // Picks a function: rarely one that empties the list, mostly one that changes it.
        static constexpr sim::Function OFTEN[] = {
            sim::Function::AddItems,   sim::Function::AddItems,     sim::Function::AddItemAtEnd,
            sim::Function::RemoveItem, sim::Function::RemoveItem,   sim::Function::ModifyItem,
            sim::Function::ModifyItem, sim::Function::SetSelection, sim::Function::SetSelection};
        static constexpr sim::Function SELDOM[] = {
            sim::Function::RemoveAllItems, sim::Function::SetClicked, sim::Function::GetSelection,
            sim::Function::GetAllItems};
        return Below(40) == 0 ? SELDOM[Below(std::size(SELDOM))] : OFTEN[Below(std::size(OFTEN))];
    }

    sim::Items ItemsFor(sim::Function function) {
        switch (function) {
            case sim::Function::AddItems:
                return SomeItems(Below(5));
            case sim::Function::SetSelection:
                // Sometimes returns an item without an id, which means no item.
                return Below(10) == 0 ? sim::Items{sim::Item{}} : SomeItems(1);
            case sim::Function::AddItemAtEnd:
            case sim::Function::RemoveItem:
                return SomeItems(1);
            case sim::Function::ModifyItem:
                return SomeItems(2);
            default:
                return {};
        }
    }

private:
    size_t Below(size_t limit) { return m_random() % limit; }

    sim::Items SomeItems(size_t count) {
        sim::Items items(count);
        for (sim::Item& item : items) {
            const std::string number = std::to_string(Below(24));
            item = {"id" + number, "Città " + number + std::string(Below(40), 'x')};
        }
        return items;
    }

    std::mt19937_64 m_random;
};

}  // namespace applist::test
