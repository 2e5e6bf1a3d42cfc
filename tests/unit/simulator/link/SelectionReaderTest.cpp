// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <deque>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "link/SelectionReader.h"

namespace applist::sim {
namespace {

/// What happens, in words, and the lines that are reported.
///
/// A number is an event of the application :1.5, or of :1.6 if it ends with a 6: "1", "26". Its
/// selection is then read by a call. "@0=a" answers the first call with the item a named A, "@0="
/// with an empty item, "@0!gone" with an error; "lost" ends the application :1.5.
struct Happenings {
    const char* name;
    std::string words;
    std::vector<std::string> lines;
};

void PrintTo(const Happenings& row, std::ostream* out) {
    *out << row.words;
}

class SelectionReaderTest : public testing::TestWithParam<Happenings> {
protected:
    using Done = std::function<void(const Result<Items>& reply)>;

    void Happen(const std::string& word) {
        if (word == "lost") {
            m_reader.Lost(":1.5");
        } else if (word[0] == '@') {
            Answer(m_calls.at(static_cast<size_t>(word[1] - '0')), word[2], word.substr(3));
        } else {
            const std::string application = word.size() > 1 ? ":1.6" : ":1.5";
            const auto event = static_cast<Event>(word[0] - '0');
            m_reader.Read(application, event, [this, event](const SelectedItem& selection) {
                m_lines.push_back(DescribeSelection(event, selection));
            });
            EXPECT_EQ(m_asked, application);
        }
    }

    static void Answer(const Done& call, char kind, const std::string& text) {
        if (kind == '!') {
            call(Result<Items>::Failure(text));
        } else {
            call(
                Items{{text, text.empty() ? "" : std::string(1, static_cast<char>(text[0] - 32))}});
        }
    }

    std::string m_asked;
    std::deque<Done> m_calls;
    std::vector<std::string> m_lines;
    SelectionReader m_reader{[this](const std::string& application, auto done) {
        m_asked = application;
        m_calls.push_back(std::move(done));
    }};
};

TEST_P(SelectionReaderTest, ReportsTheseSelections) {
    std::istringstream words(GetParam().words);
    for (std::string word; words >> word;) {
        Happen(word);
    }
    EXPECT_EQ(m_lines, GetParam().lines);
}

const std::string A = "selection a\tA";
const std::string ENDED = "the application ended";

INSTANTIATE_TEST_SUITE_P(
    Selections, SelectionReaderTest,
    testing::Values(Happenings{"AreAwaited", "2", {}},
                    Happenings{"AreThoseOfTheReply", "2 @0=a", {A}},
                    Happenings{"MayBeEmpty", "4 @0=", {"selection none"}},
                    Happenings{"KeepTheOrderOfTheEvents", "1 2 @1=b @0=a", {A, "selection b\tB"}},
                    Happenings{"WaitForEarlierOnes", "1 2 @1=b", {}},
                    Happenings{
                        "AreUnreadableIfTheCallFails", "1 @0!gone", {"selection unreadable: gone"}},
                    Happenings{"AreUnreadableIfTheApplicationEnds",
                               "1 16 lost @0=c @1=a",
                               {"selection unreadable: " + ENDED, A}}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Choices, SelectionReaderTest,
    testing::Values(Happenings{"AreThoseOfTheReply", "2 @0=a 3 @1=b", {A, "chose b\tB"}},
                    Happenings{"AreTheLastSelectionIfTheApplicationHasEnded",
                               "2 2 @0=a @1=b 1 @2=c 3 lost",
                               {A, "selection b\tB", "selection c\tC", "chose b\tB"}},
                    Happenings{
                        "AreTheLastSelectionIfTheCallFails", "2 @0=a 3 @1!gone", {A, "chose a\tA"}},
                    // The older answer names an item from which the viewer has moved away since.
                    Happenings{"AreNeverAnOlderSelection",
                               "2 @0=a 2 3 lost",
                               {A, "selection unreadable: " + ENDED, "choice unknown: " + ENDED}},
                    Happenings{"AreNotASelectionThatCouldNotBeRead",
                               "2 @0=a 2 @1!busy 3 @2!gone",
                               {A, "selection unreadable: busy", "choice unknown: gone"}},
                    Happenings{"AreNotASelectionOfAnotherApplication",
                               "26 @0=a 3 lost",
                               {A, "choice unknown: " + ENDED}}),
    [](const auto& test) { return test.param.name; });

TEST(SelectionIn, AReplyIsUnreadableUnlessItHasOneItem) {
    const auto described = [](const Result<Items>& reply) {
        return DescribeSelection(Event::ItemChanged, SelectedIn(reply));
    };
    EXPECT_EQ(described(Result<Items>::Failure("gone\naway")),
              "selection unreadable: gone\\x0aaway");
    EXPECT_EQ(described(ItemsOfReply(Bytes{1, 2, 3})),
              "selection unreadable: the reply of 3 bytes is not a list of items");
    EXPECT_EQ(described(Items()), "selection unreadable: 0 items in the reply");
}

TEST(Output, KeepsAnItemOnOneLine) {
    EXPECT_EQ(ItemLine({"a\tb", "Caff\u00e8\n\x7F\\n"}), "a\\x09b\tCaff\u00e8\\x0a\\x7f\\\\n");
}

}  // namespace
}  // namespace applist::sim
