// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The note that the list closes soon.
#include "fakes/FakeText.h"
#include "list/ListFocus.h"
#include "support/Scene.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

using desktop::ListFocus;
using desktop::ListPanel;

static_assert(ListPanel::OPEN_SECONDS == DefaultAppListControl::AUTO_CLOSE_SECONDS);

class TheClosingNote : public SceneTest {
protected:
    bool IsShown() {
        return StateOf(ObjectsOf(window(), POPUP_GROUP).at(0), "note_ground") == "visible";
    }
    /// Lets the time pass after which the note appears.
    void Appear() {
        ListFocus::Of(list()).panel().ShowNote();
        Draw();
        ASSERT_TRUE(IsShown());
    }
};

TEST_F(TheClosingNote, AppearsWithItsText) {
    Fill(20);
    EXPECT_FALSE(IsShown());
    Appear();
    EXPECT_EQ(TextOf(ObjectsOf(window(), POPUP_GROUP).at(0), "applist.note"),
              TranslationOf("LIST_CLOSES"));
}

TEST_F(TheClosingNote, DisappearsAtEachArrowKey) {
    Fill(20);
    for (const char* key : {"Up", "Down", "Left", "Right"}) {
        Appear();
        Type(key);
        EXPECT_FALSE(IsShown()) << key;
    }
}

// The key does not change the selection, but keeps the list open.
TEST_F(TheClosingNote, DisappearsAtEachArrowKeyInAListOfOneRow) {
    Fill(1);
    for (const char* key : {"Up", "Down", "Left", "Right"}) {
        Appear();
        Type(key);
        EXPECT_FALSE(IsShown()) << key;
    }
}

// Such a key does not keep the list open.
TEST_F(TheClosingNote, StaysAtAKeyWithoutAMeaning) {
    Fill(20);
    Appear();
    Type("5");
    EXPECT_TRUE(IsShown());
}

TEST_F(TheClosingNote, DisappearsWhenTheSelectionChanges) {
    Fill(20);
    Appear();
    model().SetSelection(model().GetAllItems().at(4));
    Draw();
    EXPECT_FALSE(IsShown());
}

// The selection changes to none, with which the program restarts its timer, too.
TEST_F(TheClosingNote, DisappearsWhenTheListIsEmptied) {
    Fill(20);
    Appear();
    model().RemoveAllItems();
    Draw();
    EXPECT_FALSE(IsShown());
}

TEST_F(TheClosingNote, StaysWhenOnlyOtherRowsChange) {
    Fill(20);
    Appear();
    model().RemoveItem(model().GetAllItems().at(9));
    Draw();
    EXPECT_TRUE(IsShown());
}

}  // namespace
}  // namespace applist::test
