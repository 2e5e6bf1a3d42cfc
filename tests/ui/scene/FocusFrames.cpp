// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Every frame shows the focus on the row that the model has selected.
#include <algorithm>

#include <gmock/gmock.h>

#include "support/AccessibilityPage.h"
#include "support/Scene.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

class TheDrawnFocus : public SceneTest {
protected:
    /// Checks every frame since Forget().
    void ExpectTheFocusOnTheSelectedRow() {
        EXPECT_FALSE(frames().empty());
        for (const Frame& frame : frames()) {
            EXPECT_EQ(frame.focused, frame.selected) << frame;
            EXPECT_TRUE(frame.focusedInside) << frame;
        }
    }
    /// Draws until the last frame has bars of this opacity.
    void ExpectSoonBars(const std::vector<int>& bars) {
        EXPECT_TRUE(HeadlessToolkit::RunUntil([&] {
            return !frames().empty() && frames().back().bars == bars;
        })) << (frames().empty() ? Frame{} : frames().back());
    }
};

class EachKey : public TheDrawnFocus, public testing::WithParamInterface<const char*> {};

TEST_P(EachKey, IsInTheNextFrame) {
    Fill(30);
    Forget();
    for (int press = 0; press < 20; ++press) {
        const size_t drawn = frames().size();
        Type(GetParam());
        EXPECT_GT(frames().size(), drawn);
    }
    ExpectTheFocusOnTheSelectedRow();
    const bool forward = std::string(GetParam()) == "Down" || std::string(GetParam()) == "Right";
    EXPECT_EQ(Selected(), forward ? "Row 21" : "Row 11");
    EXPECT_EQ(FocusedRow(), Selected());
}

INSTANTIATE_TEST_SUITE_P(Keys, EachKey, testing::Values("Down", "Up", "Right", "Left"),
                         [](const auto& test) { return std::string(test.param); });

TEST_F(TheDrawnFocus, StaysOnItsRowWhenTheThemeIsSwitched) {
    Fill(30);
    for (int press = 0; press < 12; ++press) {
        Type("Down");
    }
    for (const char* theme :
         {"applist-high-contrast-175.edj", "applist-still.edj", "applist.edj"}) {
        Forget();
        SwitchTheme(theme);
        ExpectTheFocusOnTheSelectedRow();
        EXPECT_EQ(FocusedRow(), Selected());
        Type("Down");
        ExpectTheFocusOnTheSelectedRow();
    }
    EXPECT_EQ(Selected(), "Row 16");
}

TEST_F(TheDrawnFocus, KeepsTheScrollBarAndTheFirstRowWhenTheThemeIsSwitched) {
    Fill(10);
    Type("Down");
    Type("Down");
    for (const char* theme : {"applist-high-contrast.edj", "applist-high-contrast-175.edj",
                              "applist-high-contrast-175-still.edj", "applist-175-still.edj",
                              "applist-still.edj", "applist.edj"}) {
        SCOPED_TRACE(theme);
        SwitchTheme(theme);
        const Evas_Object* shown = ObjectsOf(window(), LIST_GROUP).at(0);
        EXPECT_EQ(StateOf(shown, "bar"), "visible");
        EXPECT_EQ(StateOf(shown, "fade"), "visible");
        EXPECT_EQ(BoxOf(ObjectsOf(window(), ROW_GROUP).at(0)).y,
                  BoxOf(shown, "elm.swallow.content").y);
    }
}

TEST_F(TheDrawnFocus, FollowsKeysThatArriveFasterThanFrames) {
    Fill(30);
    Forget();
    for (int burst = 0; burst < 5; ++burst) {
        for (const char* key : {"Down", "Down", "Right", "Down", "Up", "Left", "Down"}) {
            Send(key);
        }
        Draw();
    }
    ExpectTheFocusOnTheSelectedRow();
    EXPECT_EQ(Selected(), "Row 16");
    EXPECT_EQ(FocusedRow(), Selected());
}

TEST_F(TheDrawnFocus, IsCompleteInTheFirstFrameWithRows) {
    Forget();
    Fill(3);
    ExpectSoonBars({255, 0, 0});
    for (const Frame& frame : frames()) {
        if (!frame.rows.empty()) {
            EXPECT_THAT(frame.bars, testing::ElementsAre(255, 0, 0)) << frame;
        }
    }
}

// The toolkit reuses the widgets of the first rows, which may still show the focus.
TEST_F(TheDrawnFocus, IsCompleteInTheFirstFrameWithRowsAfterAClear) {
    Fill(3);
    model().RemoveAllItems();
    Draw();
    Forget();
    Fill(3);
    ExpectSoonBars({255, 0, 0});
    for (const Frame& frame : frames()) {
        EXPECT_TRUE(frame.rows.empty() || frame.bars == std::vector({255, 0, 0})) << frame;
    }
}

// A new row may reuse the widget of the row that had the focus.
TEST_F(TheDrawnFocus, LeavesWithARemovedRow) {
    Fill(3);
    Draw();
    Forget();
    DefaultAppListItem last("Row 4", "id4");
    model().RemoveItem(model().GetSelection());
    Add(&last);
    ExpectSoonBars({255, 0, 0});
    for (const Evas_Object* row : ObjectsOf(window(), ROW_GROUP)) {
        const std::string name = edje_object_part_text_get(row, "elm.text");
        for (const char* part : {"bar", "marker", "room", "name"}) {
            EXPECT_EQ(StateOf(row, part), name == "Row 2" ? "focused" : "default")
                << name << ' ' << part;
        }
    }
}

TEST_F(TheDrawnFocus, MovesInOneFrameAfterAKey) {
    Fill(3);
    Forget();
    Type("Down");
    ExpectSoonBars({0, 255, 0});
    EXPECT_EQ(frames().size(), 1U);
}

/// Records the keys that the toolkit delivers to a widget.
class SeenByTheList {
public:
    explicit SeenByTheList(Evas_Object* list) : m_list(list) {
        evas_object_event_callback_add(m_list, EVAS_CALLBACK_KEY_DOWN, OnKey, &m_keys);
    }
    ~SeenByTheList() {
        evas_object_event_callback_del_full(m_list, EVAS_CALLBACK_KEY_DOWN, OnKey, &m_keys);
    }
    SeenByTheList(const SeenByTheList&) = delete;
    SeenByTheList& operator=(const SeenByTheList&) = delete;

    const std::vector<std::string>& keys() const { return m_keys; }

private:
    static void OnKey(void* keys, Evas* /*canvas*/, Evas_Object* /*list*/, void* event) {
        static_cast<std::vector<std::string>*>(keys)->emplace_back(
            static_cast<Evas_Event_Key_Down*>(event)->key);
    }

    Evas_Object* m_list;
    std::vector<std::string> m_keys;
};

// The toolkit would move the focus to a widget on the right or left. While rows are being laid out,
// it would find another row there.
TEST_F(TheDrawnFocus, IsNotMovedByTheToolkitWhenRightOrLeftIsPressed) {
    Fill(30);
    Type("Down");
    Forget();
    const SeenByTheList seen(list());
    for (const char* key : {"Right", "Left", "x"}) {
        HeadlessToolkit::PressKey(key);
    }
    EXPECT_EQ(seen.keys(), std::vector<std::string>{"x"});
    EXPECT_EQ(Now().selected, "Row 2");
    EXPECT_EQ(Now().focused, "Row 2");
}

TEST_F(TheDrawnFocus, StaysOnTheSelectedRowWhenRightOrLeftIsPressedBeforeTheRowsAreLaidOut) {
    DefaultAppListItem added[] = {{"Row 1", "a"}, {"Row 2", "b"}, {"Row 3", "c"}};
    for (DefaultAppListItem& item : added) {
        Add(&item);
        HeadlessToolkit::QueueKey("Right", true);
        HeadlessToolkit::QueueKey("Left", true);
    }
    model().SetSelection(&added[1]);
    Forget();
    Draw();
    EXPECT_EQ(Selected(), "Row 2");
    ExpectTheFocusOnTheSelectedRow();
    model().RemoveAllItems();
}

// With reduced motion.
class TheStillList : public SceneTest {
protected:
    TheStillList() : SceneTest("applist-still.edj") {
        evas_event_callback_add(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                Count, &m_pictures);
    }
    ~TheStillList() override {
        evas_event_callback_del_full(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                     Count, &m_pictures);
    }
    TheStillList(const TheStillList&) = delete;
    TheStillList& operator=(const TheStillList&) = delete;

    /// Waits until a frame would have been drawn if one were due.
    static void Rest() {
        HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(150));
    }

    /// The number of frames that have changed pixels on the screen.
    int m_pictures = 0;

private:
    static void Count(void* pictures, Evas* /*canvas*/, void* /*info*/) {
        ++*static_cast<int*>(pictures);
    }
};

TEST_F(TheStillList, DrawsOneFrameForAKeyAndNoneAtRest) {
    Fill(12);
    Rest();
    int most = 0;
    // Over both ends and through rows that must be scrolled into view.
    for (const char* key : {"Down", "Up", "Up", "Left", "Right", "Down", "Right", "Left"}) {
        m_pictures = 0;
        Forget();
        Type(key);
        Rest();
        EXPECT_EQ(m_pictures, 1) << key;
        most = std::max(most, m_pictures);
        ASSERT_FALSE(frames().empty());
        EXPECT_EQ(frames().back().focused, Selected()) << frames().back();
        EXPECT_TRUE(frames().back().focusedInside) << frames().back();
    }
    EXPECT_TRUE(IsStated("WCAG 2.3.3 animation from interactions with reduced motion", most == 1,
                         WithUnit(most, 0, " frame for a key")));
    m_pictures = 0;
    HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(1500));
    EXPECT_EQ(m_pictures, 0);
}

}  // namespace
}  // namespace applist::test
