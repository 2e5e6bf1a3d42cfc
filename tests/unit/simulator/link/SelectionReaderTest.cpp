// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <deque>
#include <functional>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "link/SelectionReader.h"

namespace applist::sim {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string APPLICATION = ":1.5";

/// An application whose answers the test triggers.
struct FakeApplication {
    using Done = std::function<void(const Result<Items>& reply)>;

    // Answers the call with this number with one item.
    void Answer(size_t call, const Item& item) { calls.at(call).second(Items{item}); }

    void Fail(size_t call, const std::string& error) {
        calls.at(call).second(Result<Items>::Failure(error));
    }

    std::deque<std::pair<std::string, Done>> calls;
};

class SelectionReaderTest : public testing::Test {
protected:
    void Add(Event event, const std::string& application = APPLICATION) {
        m_reader.Read(application, event, [this, event](const SelectedItem& selection) {
            m_lines.push_back(DescribeSelection(event, selection));
        });
    }

    FakeApplication m_application;
    std::vector<std::string> m_lines;
    SelectionReader m_reader{[this](const std::string& application, auto done) {
        m_application.calls.push_back({application, std::move(done)});
    }};
};

TEST_F(SelectionReaderTest, ReportsTheSelectionOfTheReply) {
    Add(Event::ItemSelected);
    EXPECT_THAT(m_lines, IsEmpty());
    EXPECT_EQ(m_application.calls.at(0).first, APPLICATION);
    m_application.Answer(0, {"w1", "Weather"});
    EXPECT_THAT(m_lines, ElementsAre("selection w1\tWeather"));
}

TEST_F(SelectionReaderTest, ReportsNoneWithoutASelection) {
    Add(Event::LocalCreated);
    m_application.Answer(0, {});
    EXPECT_THAT(m_lines, ElementsAre("selection none"));
}

TEST_F(SelectionReaderTest, KeepsTheOrderOfTheEventsWhateverTheOrderOfTheAnswers) {
    Add(Event::ItemChanged);
    Add(Event::ItemSelected);
    m_application.Answer(1, {"b", "B"});
    EXPECT_THAT(m_lines, IsEmpty());
    m_application.Answer(0, {"a", "A"});
    EXPECT_THAT(m_lines, ElementsAre("selection a\tA", "selection b\tB"));
}

TEST_F(SelectionReaderTest, ReportsWhyTheSelectionCannotBeRead) {
    for (size_t i = 0; i < 3; ++i) {
        Add(Event::ItemChanged);
    }
    m_application.Fail(0, "gone\naway");
    m_application.calls.at(1).second(ItemsOfReply(Bytes{1, 2, 3}));
    m_application.calls.at(2).second(Items());
    EXPECT_THAT(m_lines, ElementsAre("selection unreadable: gone\\x0aaway",
                                     "selection unreadable: the reply of 3 bytes is not a "
                                     "list of items",
                                     "selection unreadable: 0 items in the reply"));
}

TEST_F(SelectionReaderTest, CompletesTheReadsOfAnApplicationThatEnded) {
    Add(Event::ItemChanged);
    Add(Event::ItemChanged, ":1.6");
    m_reader.Lost(APPLICATION);
    EXPECT_THAT(m_lines, ElementsAre("selection unreadable: the application ended"));
    m_application.Answer(0, {"late", "Late"});
    m_application.Answer(1, {"a", "A"});
    EXPECT_EQ(m_lines.size(), 2U);
    EXPECT_EQ(m_lines.back(), "selection a\tA");
}

TEST_F(SelectionReaderTest, ReportsTheChoiceThatTheApplicationAnswers) {
    Add(Event::ItemSelected);
    m_application.Answer(0, {"a", "A"});
    Add(Event::ItemClicked);
    m_application.Answer(1, {"b", "B"});
    EXPECT_EQ(m_lines.back(), "chose b\tB");
}

TEST_F(SelectionReaderTest, TakesTheChoiceFromTheLastSelectionWhenTheApplicationHasEnded) {
    Add(Event::ItemSelected);
    Add(Event::ItemSelected);
    m_application.Answer(0, {"a", "A"});
    m_application.Answer(1, {"b", "B"});
    Add(Event::ItemChanged);
    m_application.Answer(2, {"c", "C"});
    Add(Event::ItemClicked);
    m_reader.Lost(APPLICATION);
    EXPECT_EQ(m_lines.back(), "chose b\tB");
}

TEST_F(SelectionReaderTest, TakesTheChoiceFromTheLastSelectionWhenTheCallFails) {
    Add(Event::ItemSelected);
    m_application.Answer(0, {"a", "A"});
    Add(Event::ItemClicked);
    m_application.Fail(1, "gone");
    EXPECT_EQ(m_lines.back(), "chose a\tA");
}

// The older answer names an item from which the viewer has moved away since.
TEST_F(SelectionReaderTest, NeverTakesTheChoiceFromAnOlderSelection) {
    Add(Event::ItemSelected);
    m_application.Answer(0, {"a", "A"});
    Add(Event::ItemSelected);
    Add(Event::ItemClicked);
    m_reader.Lost(APPLICATION);
    EXPECT_EQ(m_lines.back(), "choice unknown: the application ended");
}

TEST_F(SelectionReaderTest, DoesNotTakeTheChoiceFromASelectionThatCouldNotBeRead) {
    Add(Event::ItemSelected);
    m_application.Answer(0, {"a", "A"});
    Add(Event::ItemSelected);
    m_application.Fail(1, "busy");
    Add(Event::ItemClicked);
    m_application.Fail(2, "gone");
    EXPECT_EQ(m_lines.back(), "choice unknown: gone");
}

TEST_F(SelectionReaderTest, DoesNotTakeTheChoiceFromAnotherApplication) {
    Add(Event::ItemSelected, ":1.6");
    m_application.Answer(0, {"a", "A"});
    Add(Event::ItemClicked);
    m_reader.Lost(APPLICATION);
    EXPECT_EQ(m_lines.back(), "choice unknown: the application ended");
}

TEST(Output, KeepsAnItemOnOneLine) {
    EXPECT_EQ(ItemLine({"a\tb", "Caff\u00e8\n\x7F\\n"}), "a\\x09b\tCaff\u00e8\\x0a\\x7f\\\\n");
}

}  // namespace
}  // namespace applist::sim
