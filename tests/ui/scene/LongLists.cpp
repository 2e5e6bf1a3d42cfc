// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Lists with more rows than the panel shows.
#include <Edje.h>
#include <dlfcn.h>
#include <memory>

#include "support/Scene.h"
#include "ui/scene/SceneTest.h"

namespace {

int g_measurements = 0;
int g_names = 0;

/// An item that counts how often its name is asked for.
class CountedItem : public DefaultAppListItem {
public:
    using DefaultAppListItem::DefaultAppListItem;
    std::string GetVisibleName() override {
        ++g_names;
        return DefaultAppListItem::GetVisibleName();
    }
};

}  // namespace

// Replaces the function with which the toolkit's list measures a row.
extern "C" void edje_object_size_min_restricted_calc(Evas_Object* row, Evas_Coord* width,
                                                     Evas_Coord* height, Evas_Coord leastWidth,
                                                     Evas_Coord leastHeight) {
    static auto* const replaced = reinterpret_cast<decltype(&edje_object_size_min_restricted_calc)>(
        dlsym(RTLD_NEXT, "edje_object_size_min_restricted_calc"));
    ++g_measurements;
    replaced(row, width, height, leastWidth, leastHeight);
}

namespace applist::test {
namespace {

class ALongList : public SceneTest {
protected:
    /// Checks that the row with this name has the focus, is drawn with it, and is selected.
    void ExpectOn(const std::string& name) {
        const Frame now = Now();
        EXPECT_EQ(now.selected, name) << now;
        EXPECT_EQ(now.focused, name) << now;
        EXPECT_TRUE(now.focusedInside) << now;
        EXPECT_EQ(FocusedRow(), name) << now;
    }
};

TEST_F(ALongList, DoesNotMeasureEachRow) {
    Fill(1);
    const int measuredForOne = g_measurements;
    model().AddItems(Make(60));
    Draw();
    EXPECT_LT(g_measurements - measuredForOne, 60);
}

// The toolkit asks for a row's name when it creates a widget for it.
TEST_F(ALongList, CreatesFewWidgetsWhileItsRowsAreLaidOut) {
    constexpr int ROWS = 1000;
    std::vector<std::unique_ptr<CountedItem>> items;
    std::vector<AppListItem*> added;
    for (int row = 1; row <= ROWS; ++row) {
        items.push_back(std::make_unique<CountedItem>("Row", std::to_string(row)));
        added.push_back(items.back().get());
    }
    model().AddItems(added);
    g_names = 0;
    EXPECT_TRUE(HeadlessToolkit::RunUntil([this] {
        int height = 0;
        elm_scroller_child_size_get(list(), nullptr, &height);
        const std::vector<Evas_Object*> rows = ObjectsOf(window(), ROW_GROUP);
        return !rows.empty() && height == ROWS * BoxOf(rows.front(), "base").height;
    }));
    EXPECT_LT(g_names, ROWS / 2);
    model().RemoveAllItems();
}

// When the row that the model selected last is scrolled into view again, the renderer gives it the
// focus. The viewer may have selected another row since.
TEST_F(ALongList, KeepsTheViewersRowWhenTheFirstOneComesIntoViewAgain) {
    Fill(60);
    for (int row = 2; row <= 40; ++row) {
        Type("Down");
        ExpectOn("Row " + std::to_string(row));
    }
    for (int row = 39; row >= 1; --row) {
        Type("Up");
        ExpectOn("Row " + std::to_string(row));
    }
}

TEST_F(ALongList, KeepsTheViewersRowWhenOneThatTheModelSelectedComesIntoViewAgain) {
    Fill(60);
    for (int row = 2; row <= 20; ++row) {
        Type("Right");
        ExpectOn("Row " + std::to_string(row));
    }
    for (int row = 21; row <= 50; ++row) {
        Type("Down");
        ExpectOn("Row " + std::to_string(row));
    }
    for (int row = 49; row >= 1; --row) {
        Type("Up");
        ExpectOn("Row " + std::to_string(row));
    }
}

/// The number of rows; the panel shows eight at a time.
class AnyLength : public ALongList, public testing::WithParamInterface<int> {};

TEST_P(AnyLength, TakesOneFrameForEachKeyAndDrawsNoMoreRowsThanThePanelHolds) {
    Fill(GetParam());
    Forget();
    constexpr int KEYS = 30;
    for (int key = 0; key < KEYS; ++key) {
        Type(key % 2 == 0 ? "Down" : "Right");
    }
    ExpectOn("Row " + std::to_string(1 + KEYS % GetParam()));
    for (const Frame& frame : frames()) {
        EXPECT_EQ(frame.focused, frame.selected) << frame;
        EXPECT_TRUE(frame.focusedInside) << frame;
        EXPECT_LE(frame.rows.size(), 9U) << frame;
    }
    // Widgets exist only for rows near the panel, regardless of the length of the list.
    Eina_List* real = elm_genlist_realized_items_get(list());
    EXPECT_LE(eina_list_count(real), 64U);
    eina_list_free(real);
}

TEST_P(AnyLength, WrapsBothWays) {
    Fill(GetParam());
    const std::string last = "Row " + std::to_string(GetParam());
    for (const auto& [back, forward] : {std::pair("Up", "Down"), std::pair("Left", "Right")}) {
        Type(back);
        ExpectOn(last);
        Type(forward);
        ExpectOn("Row 1");
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, AnyLength, testing::Values(10, 1000),
                         [](const auto& test) { return std::to_string(test.param); });

class AFarRow : public SceneTest {};

TEST_F(AFarRow, GetsTheFocusWhenItIsSelectedBeforeTheRowsAreLaidOut) {
    const std::vector<AppListItem*> shown = Make(100);
    model().AddItems(shown);
    model().SetSelection(shown.back());
    Draw();
    EXPECT_EQ(FocusedRow(), "Row 100");
    EXPECT_EQ(Now().focused, "Row 100");
}

}  // namespace
}  // namespace applist::test
