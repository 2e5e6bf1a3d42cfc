// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "scenario/Statement.h"
#include "scenario/Words.h"

namespace applist::sim {

/// Takes the words of a line one after the other as what they should be. The first thing that is
/// wrong is kept; after it everything taken is empty and nothing else is reported, so that a
/// grammar is written as if all went well.
class Cursor {
public:
    /// line must outlive the cursor.
    explicit Cursor(const SplitLine& line) : m_line(line) {}

    const std::optional<WordError>& error() const { return m_error; }
    /// No word is left, or nothing more is read after an error.
    bool AtEnd() const { return m_error || m_next == m_line.words.size(); }
    /// Takes the next word iff it is this keyword.
    bool Skip(const std::string& keyword);
    /// The next word is this keyword; it stays.
    bool IsNext(const std::string& keyword) const;

    /// Takes the next word. what names it in the message that it is missing.
    std::string Text(const std::string& what);
    /// Takes one of these keywords and returns its index.
    size_t Choice(const std::vector<std::string_view>& keywords);
    /// Takes the name of one of these.
    template <typename Named, size_t COUNT>
    Named OneOf(const std::array<Named, COUNT>& all) {
        std::vector<std::string_view> names(COUNT);
        std::transform(all.begin(), all.end(), names.begin(),
                       [](Named named) { return NameOf(named); });
        return all[Choice(names)];
    }
    uint32_t Number(const std::string& what, uint32_t first, uint32_t last);
    /// "200ms", "5s", "1min".
    Duration Time();
    /// "512", "64k", "16M": bytes.
    size_t Size();
    /// "within T" if it is there.
    std::optional<Duration> Within();
    Function TakeFunction();
    /// An id, with a name or without.
    ItemPattern Pattern();
    /// "ID=NAME".
    Item Pair();
    /// All words left, as hexadecimal digits in pairs.
    Bytes Hex();
    /// Nothing may be left.
    void End();
    /// Reports the word taken last, if nothing has been reported before.
    void Refuse(const std::string& message);

private:
    const Word& Take(const std::string& what);
    void FailAt(size_t column, const std::string& message);

    const SplitLine& m_line;
    size_t m_next = 0;
    std::optional<WordError> m_error;
};

}  // namespace applist::sim
