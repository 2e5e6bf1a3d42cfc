// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// What a viewer who does not see the list is told, in English.
#include <algorithm>
#include <new>

#include <gmock/gmock.h>

#include "list/ListFocus.h"
#include "list/News.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

using desktop::News;
using testing::ElementsAre;
using testing::IsEmpty;

/// A sentence, and the number of frames drawn before it.
struct Told {
    News::Kind kind;
    std::string text;
    size_t frames;
};

class TheNews : public SceneTest {
protected:
    TheNews() { Listen(); }
    void Listen() {
        m_listener.emplace([this](const News& news) {
            EXPECT_TRUE(news.kind != News::Kind::MESSAGE || news.source == list());
            const std::string title = news.title.empty() ? "" : "[" + news.title + "] ";
            m_told.push_back({news.kind, title + news.text, frames().size()});
        });
    }
    std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (const Told& each : m_told) {
            texts.push_back(each.text);
        }
        return texts;
    }
    bool Said(const std::string& text) const {
        return std::any_of(m_told.begin(), m_told.end(),
                           [&](const Told& each) { return each.text == text; });
    }
    /// Waits for one more sentence.
    bool Await(const std::string& text) {
        return HeadlessToolkit::RunUntil([&] { return Said(text); });
    }
    /// Waits until a change of the rows would have been told.
    static void Rest() {
        HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(700));
    }
    /// A machine that needs half a second for the rows tells the empty list first, and their number
    /// later; waits for that.
    bool ToldTheEmptyListFirst(int count) {
        if (!m_told.front().text.ends_with("services")) {
            return false;
        }
        // In either order, because the row is told when it has been drawn.
        const std::string number = std::to_string(count);
        EXPECT_TRUE(Await("List changed, " + number + " entries") && Await("Row 1, 1 of " + number))
            << testing::PrintToString(Texts());
        return true;
    }
    void FillAndForget(int count) {
        Fill(count);
        ToldTheEmptyListFirst(count);
        m_told.clear();
        Forget();
    }
    AppListItem* At(size_t index) { return model().GetAllItems().at(index); }
    const Told& Last() const { return m_told.back(); }

    std::vector<Told> m_told;
    std::optional<desktop::NewsListener> m_listener;
};

TEST_F(TheNews, StartWithTheTitleAndDoNotCountRowsThatAppearWithTheList) {
    Fill(8);
    EXPECT_EQ(Last().kind, News::Kind::FOCUSED);
    if (ToldTheEmptyListFirst(8)) {
        EXPECT_THAT(Texts(), testing::UnorderedElementsAre(
                                 "[Data services] Waiting for the broadcast's services",
                                 "Row 1, 1 of 8", "List changed, 8 entries"));
        return;
    }
    Rest();
    EXPECT_THAT(Texts(), ElementsAre("[Data services] Row 1, 1 of 8"));
}

TEST_F(TheNews, DoNotCallAListEmptyWhoseRowsAreNotCountedYet) {
    Add(Make(1).front());
    desktop::ListFocus::Of(list()).panel().Settle();
    Draw();
    EXPECT_THAT(Texts(), ElementsAre("[Data services] Row 1, 1 of 1"));
}

TEST_F(TheNews, CountRowsThatCameOneAfterTheOtherAtMostTwiceASecond) {
    using Clock = std::chrono::steady_clock;
    Fill(1);
    Rest();
    m_told.clear();
    const auto start = Clock::now();
    for (AppListItem* item : Make(12)) {
        Add(item);
        Draw();
    }
    EXPECT_TRUE(Await("List changed, 12 entries"));
    EXPECT_LE(m_told.size(),
              static_cast<size_t>((Clock::now() - start) / std::chrono::milliseconds(500)));
}

TEST_F(TheNews, DoNotCountAListWithAsManyRowsAsBefore) {
    FillAndForget(5);
    Rest();
    m_told.clear();
    model().RemoveAllItems();
    // Not drawn, which may take longer than the panel waits.
    desktop::ListFocus::Of(list()).panel().Update();
    Fill(5);
    Rest();
    EXPECT_THAT(Texts(), testing::Each("Row 1, 1 of 5"));
}

TEST_F(TheNews, SayThatTheListClosesUntilAKeyKeepsItOpen) {
    FillAndForget(5);
    desktop::ListFocus::Of(list()).panel().ShowNote();
    Type("Down");
    EXPECT_THAT(Texts(),
                testing::UnorderedElementsAre("Closes in 20 seconds", "", "Row 2, 2 of 5"));
    EXPECT_EQ(Texts().front(), "Closes in 20 seconds");
}

TEST_F(TheNews, DoNotKeepTheFocusFromMovingIfTheyCannotBeTold) {
    FillAndForget(5);
    desktop::ListFocus::Of(list()).panel().ShowNote();
    const desktop::NewsListener failing([](const News&) { throw std::bad_alloc(); });
    Type("Down");
    EXPECT_EQ(FocusedRow(), "Row 2");
    EXPECT_EQ(Selected(), "Row 2");
}

TEST_F(TheNews, NameTheFocusedRowBeforeTheFrameThatShowsIt) {
    FillAndForget(8);
    for (const char* key : {"Down", "Next", "Up"}) {
        Forget();
        m_told.clear();
        Type(key);
        ASSERT_EQ(m_told.size(), 1U) << key;
        EXPECT_EQ(Last().text.substr(0, 6), Selected() + ",");
        EXPECT_EQ(Last().frames, 0U) << frames().at(0);
    }
}

TEST_F(TheNews, NameTheRowThatTheMiddlewareSelectsAndNoOther) {
    FillAndForget(20);
    model().SetSelection(At(14));
    Draw();
    EXPECT_THAT(Texts(), ElementsAre("Row 15, 15 of 20"));
    Rest();
    EXPECT_THAT(Texts(), ElementsAre("Row 15, 15 of 20"));
}

TEST_F(TheNews, NameTheNeighbourOfTheFocusedRowThatIsRemoved) {
    FillAndForget(8);
    model().RemoveItem(At(0));
    EXPECT_TRUE(Await("List changed, 7 entries"));
    EXPECT_THAT(Texts(), ElementsAre("Row 2, 1 of 7", "List changed, 7 entries"));
}

TEST_F(TheNews, NameTheFocusedRowAnewAfterItWasRenamed) {
    FillAndForget(8);
    model().ModifyItem(At(0), Make(9).back());
    EXPECT_TRUE(Await("List changed, 8 entries"));
    EXPECT_THAT(Texts(), ElementsAre("Row 9, 1 of 8", "List changed, 8 entries"));
}

TEST_F(TheNews, CountASingleRow) {
    FillAndForget(2);
    model().RemoveItem(At(1));
    EXPECT_TRUE(Await("List changed, 1 entry"));
}

TEST_F(TheNews, SayThatAnEmptyListWaits) {
    FillAndForget(2);
    model().RemoveAllItems();
    EXPECT_TRUE(Await("Waiting for the broadcast's services"));
    EXPECT_EQ(Last().kind, News::Kind::MESSAGE);
    Draw();
    EXPECT_EQ(m_told.size(), 1U);
}

TEST_F(TheNews, TellOfRowsThatEndTheWaiting) {
    ASSERT_TRUE(Await("[Data services] Waiting for the broadcast's services"));
    Fill(3);
    EXPECT_EQ(Last().text, "Row 1, 1 of 3");
    EXPECT_TRUE(Await("List changed, 3 entries"));
}

TEST_F(TheNews, ReachANewListenerFromTheTitleOn) {
    m_listener.reset();
    Fill(8);
    Type("Down");
    EXPECT_THAT(m_told, IsEmpty());
    Listen();
    Draw();
    EXPECT_THAT(Texts(), ElementsAre("[Data services] Row 2, 2 of 8"));
}

TEST_F(TheNews, TakeANameAsItIs) {
    DefaultAppListItem item("{count} {position} {name}", "id");
    Add(&item);
    EXPECT_TRUE(Await("[Data services] {count} {position} {name}, 1 of 1"));
}

}  // namespace
}  // namespace applist::test
