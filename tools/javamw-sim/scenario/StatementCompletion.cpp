// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <glib.h>
#include <iterator>

#include "link/Protocol.h"
#include "scenario/Statement.h"
#include "shared/CommandLine.h"

namespace applist::sim {
namespace {

using Words = std::vector<std::string>;

constexpr const char* BLANKS = " \t";

// Reduces "[within" and "ID[=NAME]..." to "within" and "ID".
std::string Bare(const std::string& token) {
    const size_t begin = token.find_first_not_of("[|");
    if (begin == std::string::npos) {
        return {};
    }
    const size_t end = token.find_first_of("[].", begin);
    return token.substr(begin, end == std::string::npos ? end : end - begin);
}

bool IsKeyword(const std::string& token) {
    return !token.empty() && std::ranges::all_of(token, [](char character) {
        return g_ascii_islower(character) != FALSE || character == '-';
    });
}

// Only such ids are offered, because the completion works on words without quotes.
bool NeedsNoQuotes(const std::string& id) {
    return !id.empty() && std::ranges::all_of(id, [](char character) {
        return g_ascii_isgraph(character) != FALSE && character != '"' && character != '#' &&
               character != '=' && character != '\\';
    });
}

/// Collects the candidates at a position.
class Candidates {
public:
    explicit Candidates(const std::set<std::string>& ids) : m_ids(ids) {}

    /// Adds the first words of statements and the commands of the shell.
    void AddCommands() {
        AddStatements();
        for (const StatementForm& command : ShellCommands()) {
            m_words.insert(command.keyword);
        }
    }
    void AddStatements() {
        for (const StatementForm& form : StatementForms()) {
            m_words.insert(form.keyword.substr(0, form.keyword.find(' ')));
        }
    }
    /// Adds the candidates after the given words.
    void AddWhatFollows(const Words& before) {
        for (const StatementForm& form : StatementForms()) {
            const Words keyword = tools::WordsOf(form.keyword);
            const size_t common = std::min(before.size(), keyword.size());
            if (!std::equal(keyword.begin(), keyword.begin() + static_cast<std::ptrdiff_t>(common),
                            before.begin())) {
                continue;
            }
            if (before.size() < keyword.size()) {
                m_words.insert(keyword[before.size()]);
            } else {
                AddPlaces(form);
            }
        }
    }
    const std::set<std::string>& words() const { return m_words; }

private:
    void AddPlaces(const StatementForm& form) {
        for (const std::string& token : tools::WordsOf(form.words)) {
            AddPlace(form, Bare(token));
        }
    }
    void AddPlace(const StatementForm& form, const std::string& place) {
        if (IsKeyword(place)) {
            m_words.insert(place);
        } else if (place == "ID") {
            std::ranges::copy_if(m_ids, std::inserter(m_words, m_words.end()), NeedsNoQuotes);
        } else if (place == "FUNCTION") {
            AddNames(FUNCTIONS);
        } else if (place == "STEP") {
            AddNames(ANNOUNCEMENTS);
        } else if (place == "NAME" && form.keyword == "expect event") {
            AddNames(EVENTS);
        } else if (place == "MESSAGE") {
            AddStatements();
        }
    }
    template <typename Named>
    void AddNames(const Named& all) {
        for (const auto& named : all) {
            m_words.emplace(NameOf(named));
        }
    }

    const std::set<std::string>& m_ids;
    std::set<std::string> m_words;
};

}  // namespace

std::string_view LastWord(std::string_view text) {
    const size_t blank = text.find_last_of(BLANKS);
    return blank == std::string_view::npos ? text : text.substr(blank + 1);
}

std::vector<std::string> Completions(std::string_view text, const std::set<std::string>& ids) {
    const std::string_view word = LastWord(text);
    Words before = tools::WordsOf(std::string(text.substr(0, text.size() - word.size())));
    Candidates candidates(ids);
    // These commands take a statement.
    const bool nested = !before.empty() && (before.front() == "busctl" || before.front() == "help");
    if (nested) {
        before.erase(before.begin());
    }
    if (before.empty()) {
        candidates.AddCommands();
    } else {
        candidates.AddWhatFollows(before);
    }
    std::vector<std::string> matching;
    std::copy_if(candidates.words().begin(), candidates.words().end(), std::back_inserter(matching),
                 [word](const std::string& candidate) { return candidate.starts_with(word); });
    return matching;
}

std::string CommonRest(const std::vector<std::string>& candidates, std::string_view word) {
    if (candidates.empty()) {
        return {};
    }
    std::string common = candidates.front();
    for (const std::string& candidate : candidates) {
        const auto end = std::ranges::mismatch(common, candidate);
        common.erase(end.in1, common.end());
    }
    // A blank follows a complete word, so that the next word can be typed at once.
    return common.substr(word.size()) + (candidates.size() == 1 ? " " : "");
}

const std::vector<StatementForm>& ShellCommands() {
    static const std::vector<StatementForm> COMMANDS{
        {"help", "[STATEMENT]", "What can be typed"},
        {"busctl", "[STATEMENT]",
         "The busctl lines that do the same as STATEMENT, or the last one"},
        {"quit", "", "End the shell; end-of-file does the same"},
    };
    return COMMANDS;
}

}  // namespace applist::sim
