// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "list/ListNews.h"

#include <functional>

#include "i18n_text.h"
#include "list/ListPanel.h"

namespace applist::desktop {
namespace {

std::string RowSentence(const std::string& name, int position, int count) {
    return Filled(i18n_get_text("LIST_ROW"), {{"{position}", std::to_string(position)},
                                              {"{count}", std::to_string(count)},
                                              {"{name}", name}});
}

std::string ChangeSentence(int count) {
    return Filled(count == 1 ? i18n_get_text("LIST_CHANGED_ONE") : i18n_get_text("LIST_CHANGED"),
                  {{"{count}", std::to_string(count)}});
}

}  // namespace

std::string Filled(std::string text,
                   std::initializer_list<std::pair<std::string_view, std::string>> values) {
    for (const auto& [name, value] : values) {
        const size_t found = text.find(name);
        if (found != std::string::npos) {
            text.replace(found, name.size(), value);
        }
    }
    return text;
}

void ListNews::Update(const Elm_Object_Item* focused, int position, int count) {
    if (!NewsListener::Any()) {
        return;
    }
    // A new listener has not heard anything yet, so the current state is told again.
    if (std::exchange(m_listeners, NewsListener::Created()) != NewsListener::Created()) {
        m_told = nullptr;
        m_names.reset();
        m_titleTold = false;
        if (!m_held.empty()) {
            Tell(News::Kind::MESSAGE, m_held);
        }
    }
    // The row may lose the focus and get it back, for example when the theme changes.
    if (focused != nullptr && focused != m_told) {
        m_told = focused;
        Tell(News::Kind::FOCUSED, RowSentence(RowText(m_list, focused), position, count));
    }
}

void ListNews::Settled(int count) {
    if (count > 0) {
        m_held.clear();
    }
    if (!NewsListener::Any()) {
        return;
    }
    const size_t names = Names();
    const std::optional<size_t> before = std::exchange(m_names, names);
    // The first rows are not a change for the viewer if they appear together with the list. An
    // empty list has its own message.
    if (before && before != names && count > 0) {
        Tell(News::Kind::MESSAGE, ChangeSentence(count));
    }
}

void ListNews::Hold(const std::string& message) {
    m_held = message;
    Tell(News::Kind::MESSAGE, message);
}

void ListNews::Withdraw() {
    m_held.clear();
    TellNews({News::Kind::MESSAGE, m_list, {}, {}});
}

void ListNews::Tell(News::Kind kind, const std::string& text) {
    if (!NewsListener::Any()) {
        return;
    }
    // The rows that exist when the first news is told are not a change.
    if (!m_names) {
        m_names = Names();
    }
    const bool titleTold = std::exchange(m_titleTold, true);
    TellNews({kind, m_list, titleTold ? "" : TitleOf(m_list), text});
}

// A hash of the names in their order, which needs no memory for 10,000 names.
size_t ListNews::Names() const {
    constexpr size_t FACTOR = 31;
    size_t names = 0;
    for (const Elm_Object_Item* row = elm_genlist_first_item_get(m_list); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        names = names * FACTOR + std::hash<std::string>{}(RowText(m_list, row)) + 1;
    }
    return names;
}

}  // namespace applist::desktop
