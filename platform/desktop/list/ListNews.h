// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Elementary.h>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "list/News.h"

namespace applist::desktop {

/// Replaces each placeholder by its value; a translation may lack it. A value is not searched for
/// the placeholders before its own, so a value from outside must be the last one.
std::string Filled(std::string text,
                   std::initializer_list<std::pair<std::string_view, std::string>> values);

/// Tells the news of one list as sentences in the viewer's language. Main thread only; must not
/// outlive the list.
class ListNews {
public:
    explicit ListNews(Evas_Object* list) : m_list(list) {}

    /// Tells the row that has the focus, if it is another one than before. It may be null. Its
    /// position counts from 1.
    void Update(const Elm_Object_Item* focused, int position, int count);
    /// Tells the number of rows if the names are not those at the previous call or those that were
    /// told first. Call when rows have not changed for a moment.
    void Settled(int count);
    /// Tells a message that holds until it is withdrawn or rows change.
    void Hold(const std::string& message);
    void Withdraw();

private:
    void Tell(News::Kind kind, const std::string& text);
    size_t Names() const;

    Evas_Object* m_list;
    /// The row that was told last. Only compared, because it may be deleted.
    const Elm_Object_Item* m_told = nullptr;
    std::string m_held;
    std::optional<size_t> m_names;
    unsigned int m_listeners = 0;
    bool m_titleTold = false;
};

}  // namespace applist::desktop
