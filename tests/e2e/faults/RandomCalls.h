// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iterator>
#include <random>
#include <string>

#include "link/Protocol.h"

namespace applist::test {

/// Chooses calls. There are fewer ids than the calls name, so that many meet again.
class RandomCalls {
public:
    explicit RandomCalls(size_t seed) : m_random(seed) {}

    sim::Function NextFunction() {
        // Few that empty the list; most that change it.
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
                // Now and then an item without an id, which means none.
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
