// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The focus while rows are added, renamed and removed. The panel shows eight rows.
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

class AChangedList : public SceneTest {
protected:
    AppListItem* At(size_t index) { return model().GetAllItems().at(index); }
    AppListItem* New() {
        const std::string number = std::to_string(m_new.size() + 1);
        m_new.push_back(std::make_unique<DefaultAppListItem>("New " + number, "new" + number));
        return m_new.back().get();
    }
    void Select(size_t index) { model().SetSelection(At(index)); }
    void Modify(size_t index) { model().ModifyItem(At(index), New()); }
    void Remove(size_t index) { model().RemoveItem(At(index)); }

    /// Checks that the selected row has the focus, is drawn with it, and is completely visible.
    void ExpectFocusOnSelection() {
        Draw();
        const Frame now = Now();
        EXPECT_EQ(now.focused, now.selected) << now;
        EXPECT_TRUE(now.focusedInside) << now;
        EXPECT_EQ(FocusedRow(), now.selected) << now;
    }

private:
    std::vector<std::unique_ptr<DefaultAppListItem>> m_new;
};

TEST_F(AChangedList, ShowsARowThatIsSelectedRightAfterItWasAdded) {
    Fill(12);
    Add(New());
    Select(12);
    ExpectFocusOnSelection();
}

TEST_F(AChangedList, ShowsTheFocusAfterTheTopRowInViewWasRenamedAndAnotherAdded) {
    Fill(28);
    for (int press = 0; press < 19; ++press) {
        Type("Down");
    }
    for (int press = 0; press < 10; ++press) {
        Type("Up");
    }
    Modify(9);
    ExpectFocusOnSelection();
    Add(New());
    ExpectFocusOnSelection();
}

TEST_F(AChangedList, KeepsFocusAndSelectionTogetherWhenAFarRowIsSelectedBetweenOtherChanges) {
    Fill(60);
    Select(50);
    Draw();
    Remove(0);
    Select(0);
    Remove(49);
    ExpectFocusOnSelection();
    EXPECT_EQ(Selected(), "Row 2");
}

class TheViewOfAChangedList : public AChangedList {
protected:
    /// Row 17 of 28 is focused and the last one in view.
    void ScrollDown() {
        Fill(28);
        for (int press = 0; press < 16; ++press) {
            Type("Down");
        }
        ExpectRow17Last();
    }
    /// All but the focused one.
    void RenameRowsInView() {
        for (size_t index = 9; index < 16; ++index) {
            Modify(index);
        }
    }
    void ExpectRow17Last() {
        ExpectFocusOnSelection();
        const Frame now = Now();
        ASSERT_EQ(now.rows.size(), 8U) << now;
        EXPECT_EQ(now.rows.back(), "Row 17") << now;
    }
};

TEST_F(TheViewOfAChangedList, StaysWhenARowIsAddedAfterRowsInViewWereRenamed) {
    ScrollDown();
    RenameRowsInView();
    ExpectRow17Last();
    Add(New());
    ExpectRow17Last();
}

TEST_F(TheViewOfAChangedList, StaysWhenRowsInViewAreRenamedAndOneIsAddedInTheSameFrame) {
    ScrollDown();
    RenameRowsInView();
    Add(New());
    ExpectRow17Last();
}

TEST_F(TheViewOfAChangedList, StaysWhenRowsAboveItAreRemovedAndRowsInItRenamed) {
    ScrollDown();
    RenameRowsInView();
    Remove(0);
    Remove(0);
    ExpectRow17Last();
}

class TheKeysOfAChangedList : public AChangedList,
                              public testing::WithParamInterface<const char*> {};

TEST_P(TheKeysOfAChangedList, MoveTheFocusAfterTheSelectionWasCleared) {
    Fill(3);
    model().RemoveAllItems();
    model().AddItems(Make(3));
    model().SetSelection(nullptr);
    Draw();
    Type(GetParam());
    ExpectFocusOnSelection();
    EXPECT_NE(Selected(), "");
}

INSTANTIATE_TEST_SUITE_P(Keys, TheKeysOfAChangedList, testing::Values("Up", "Down", "Next"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(AChangedList, FocusesItsFirstRowWhenAllWereReplacedWhileTheWindowHadNoFocus) {
    Fill(2);
    HeadlessToolkit::TakeFocus(window());
    model().SetSelection(nullptr);
    Modify(0);
    Modify(1);
    HeadlessToolkit::GiveFocus(window());
    ExpectFocusOnSelection();
    EXPECT_EQ(Selected(), "New 1");
}

TEST_F(AChangedList, MovesTheFocusByAPageAsFarAsTheEnds) {
    Fill(40);
    for (const char* row : {"Row 9", "Row 17", "Row 25", "Row 33", "Row 40", "Row 40"}) {
        Type("Next");
        EXPECT_EQ(Selected(), row);
        ExpectFocusOnSelection();
    }
    for (const char* row : {"Row 32", "Row 24", "Row 16", "Row 8", "Row 1", "Row 1"}) {
        Type("Prior");
        EXPECT_EQ(Selected(), row);
        ExpectFocusOnSelection();
    }
}

TEST_F(AChangedList, ShowsNoFocusOnAnotherRowWhenTheFocusedOneIsRemoved) {
    Fill(5);
    Type("Down");
    Type("Down");
    ASSERT_TRUE(HeadlessToolkit::RunUntil([this] { return Now().bars[1] == 0; }));
    Forget();
    Remove(2);
    Draw();
    ASSERT_EQ(Selected(), "Row 4");
    for (const Frame& frame : frames()) {
        ASSERT_EQ(frame.rows.size(), 4U) << frame;
        for (const size_t other : {0U, 1U, 3U}) {
            EXPECT_EQ(frame.bars[other], 0) << frame;
        }
    }
}

// The panel without rows, before the list is filled and after it is emptied.
class TheEmptyPanel : public SceneTest {};

TEST_F(TheEmptyPanel, ShowsNoFocusBeforeTheListIsFilled) {
    Draw();
    Type("Down");
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.focused, std::nullopt) << frame;
    }
    EXPECT_FALSE(elm_object_focus_get(list()));
}

TEST_F(TheEmptyPanel, ShowsNoRowAfterTheListWasEmptied) {
    Fill(20);
    Type("Down");
    model().RemoveAllItems();
    Forget();
    Draw();
    Type("Down");
    Type("Right");
    Draw();
    EXPECT_FALSE(frames().empty());
    for (const Frame& frame : frames()) {
        EXPECT_TRUE(frame.rows.empty()) << frame;
        EXPECT_EQ(frame.focused, std::nullopt) << frame;
    }
    EXPECT_FALSE(elm_object_focus_get(list()));
}

TEST_F(TheEmptyPanel, IsNotFollowedByAFrameWithRowsButWithoutTheFocus) {
    Forget();
    Fill(20);
    Draw();
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.rows.empty(), frame.items == 0) << frame;
        EXPECT_EQ(frame.focused.has_value(), !frame.rows.empty()) << frame;
    }
}

TEST_F(TheEmptyPanel, IsNotDrawnWhenTheListIsEmptiedAndFilledAtOnce) {
    Fill(20);
    Type("Down");
    Draw();
    model().RemoveAllItems();
    Forget();
    Fill(5);
    Draw();
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.focused, frame.selected) << frame;
        EXPECT_EQ(frame.rows.size(), 5U) << frame;
    }
}

}  // namespace
}  // namespace applist::test
