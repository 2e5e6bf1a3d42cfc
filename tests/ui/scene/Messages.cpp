// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The panel's messages for a viewer who does not see it.
#include <gmock/gmock.h>

#include "fakes/FakeText.h"
#include "list/ListFocus.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

using desktop::ListFocus;
using desktop::News;
using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class TheMessages : public SceneTest {
protected:
    /// Waits for as many messages in all.
    bool Wait(size_t count) {
        return HeadlessToolkit::RunUntil([&] { return m_messages.size() >= count; });
    }
    /// Waits until a message about the number of rows would have been sent.
    static void Settle() {
        HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(700));
    }

    const std::string waits = TranslationOf("LIST_EMPTY");
    const std::string changed = TranslationOf("LIST_CHANGED");
    std::vector<std::string> m_messages;
    const desktop::NewsListener m_listener{[this](const News& news) {
        if (news.kind == News::Kind::MESSAGE) {
            EXPECT_EQ(news.source, list());
            m_messages.push_back(news.text);
        }
    }};
};

// On a machine that needs half a second for the rows, the empty list is told first.
TEST_F(TheMessages, DoNotTellOfRowsThatAppearWithTheList) {
    Fill(5);
    Settle();
    EXPECT_THAT(m_messages, AnyOf(IsEmpty(), ElementsAre(waits, changed)));
}

TEST_F(TheMessages, TellOfRowsAfterAnEmptyListWasTold) {
    ASSERT_TRUE(Wait(1));
    Fill(5);
    ASSERT_TRUE(Wait(2));
    EXPECT_THAT(m_messages, ElementsAre(waits, changed));
}

TEST_F(TheMessages, TellAtMostTwiceASecondOfRowsOneAfterTheOther) {
    using Clock = std::chrono::steady_clock;
    ASSERT_TRUE(Wait(1));
    m_messages.clear();
    const auto start = Clock::now();
    for (AppListItem* item : Make(12)) {
        Add(item);
        Draw();
    }
    ASSERT_TRUE(Wait(1));
    Settle();
    const auto halfSeconds = (Clock::now() - start) / std::chrono::milliseconds(500);
    EXPECT_THAT(m_messages, Each(AnyOf(changed, TranslationOf("LIST_CHANGED_ONE"))));
    EXPECT_LE(m_messages.size(), static_cast<size_t>(halfSeconds));
}

TEST_F(TheMessages, DoNotTellOfAListWithAsManyRowsAsBefore) {
    Fill(5);
    Settle();
    m_messages.clear();
    model().RemoveAllItems();
    // Not drawn, which may take longer than the panel waits.
    ListFocus::Of(list()).panel().Update();
    Fill(5);
    Settle();
    EXPECT_THAT(m_messages, IsEmpty());
    model().RemoveItem(model().GetAllItems().at(4));
    ASSERT_TRUE(Wait(1));
    EXPECT_THAT(m_messages, ElementsAre(changed));
}

TEST_F(TheMessages, TellThatTheListClosesUntilAKeyKeepsItOpen) {
    Fill(5);
    ListFocus::Of(list()).panel().ShowNote();
    EXPECT_THAT(m_messages, ElementsAre(TranslationOf("LIST_CLOSES")));
    Type("Down");
    EXPECT_THAT(m_messages, ElementsAre(TranslationOf("LIST_CLOSES"), ""));
}

}  // namespace
}  // namespace applist::test
