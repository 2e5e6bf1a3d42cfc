// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <memory>
#include <new>
#include <tuple>
#include <utility>

#include "ui/presentation/RendererFixture.h"

namespace applist::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const std::vector<std::string> FOCUS_CALLS = {"elm_genlist_item_bring_in",
                                              "elm_object_item_focus_set"};

const std::string ALPHA = "[name: Alpha, unique id: a]";
const std::string BETA = "[name: Beta, unique id: b]";
const std::string GAMMA = "[name: Gamma, unique id: c]";

/// A second selection listener of the model, as the key control is.
class CountingListener : public ItemSelectionListener {
public:
    void ItemSelected(AppListModel* /*model*/) override { ++selections; }
    int selections = 0;
};

class DefaultAppListRendererFocus : public RendererTest {};

TEST_F(DefaultAppListRendererFocus, FollowsTheModelsSelection) {
    ShowFocused({&a, &b, &c}, &a);
    model.Select(&c);
    EXPECT_EQ(renderer->FocusedRow(), "c");
    EXPECT_THAT(ToolkitCalls(), ElementsAre("elm_genlist_item_bring_in(row c, 1)",
                                            "elm_object_item_focus_set(row c, true)"));
    EXPECT_THAT(model.history, ElementsAre("GetSelection"));
    EXPECT_THAT(Log(), ElementsAre(Debug("Received item selection event"),
                                   Debug("applist element data is: " + ALPHA),
                                   Debug("Found applist element that will lost focus: " + ALPHA),
                                   Debug("applist element data is: " + BETA),
                                   Debug("applist element data is: " + GAMMA),
                                   Debug("Found next focus applist element: " + GAMMA),
                                   Debug("Moved focus to other applist element"),
                                   Debug("Calling smart selection propagate: " + GAMMA),
                                   Debug("Do not propagate event up to data model")));
}

TEST_F(DefaultAppListRendererFocus, IsUnchangedOnTheSelectedRow) {
    ShowFocused({&a, &b}, &b);
    model.Select(&b);
    model.Show({&a, &b}, &b);
    EXPECT_THAT(ToolkitCallsOf(FOCUS_CALLS), IsEmpty());
    EXPECT_THAT(LogMessages(), Not(Contains("Moved focus to other applist element")));
}

TEST_F(DefaultAppListRendererFocus, StaysWhenTheSelectionIsNotInTheList) {
    ShowFocused({&a, &b}, &a);
    model.Select(&c);
    EXPECT_EQ(renderer->FocusedRow(), "a");
    EXPECT_EQ(renderer->m_focusItem, nullptr);
    EXPECT_THAT(ToolkitCallsOf(FOCUS_CALLS), IsEmpty());
    EXPECT_THAT(LogMessages(), Contains("Moved focus to other applist element"));
}

TEST_F(DefaultAppListRendererFocus, IsNotGivenToTheRowOfASelectionThatVanishes) {
    ShowFocused({&a, &b}, &a);
    model.Show({&b}, &a);
    EXPECT_EQ(renderer->m_focusItem, nullptr);
    EXPECT_THAT(ToolkitCallsOf(FOCUS_CALLS), IsEmpty());
    EXPECT_THAT(LogMessages(), Contains("Moved focus to other applist element"));
}

TEST_F(DefaultAppListRendererFocus, GoesToANewRowThatIsSelected) {
    ShowFocused({&a}, &a);
    model.Show({&a, &b}, &b);
    EXPECT_EQ(renderer->FocusedRow(), "b");
    EXPECT_THAT(ToolkitCallsOf(FOCUS_CALLS), ElementsAre("elm_genlist_item_bring_in(row b, 1)",
                                                         "elm_object_item_focus_set(row b, true)"));
    EXPECT_THAT(
        Log(), ElementsAre(Debug("Received item modification event"),
                           Debug("applist element data is: " + ALPHA),
                           Debug("Found applist element that will lost focus: " + ALPHA),
                           Debug("Number of items to print: 2"),
                           Debug("Menu item append started. Item that is being to print: " + BETA),
                           Debug("Realized Item is: " + BETA), Debug("Menu item append finished"),
                           Debug("Found newly added applist element that will have focus: " + BETA),
                           Debug("Number of items to be removed from list is: 0"),
                           Debug("Moved focus to other applist element"),
                           Debug("Calling smart selection propagate: " + BETA),
                           Debug("Do not propagate event up to data model")));
}

TEST_F(DefaultAppListRendererFocus, IsAppliedAgainWhenTheRowBecomesReal) {
    ShowFocused({&a, &b}, &b);
    DefaultAppListRenderer::OnRealized(renderer.get(), nullptr, renderer->RowOf("b"));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Realized Item is: " + BETA), Debug("Moving focus to " + BETA)));
    EXPECT_THAT(ToolkitCalls(), ElementsAre("elm_genlist_item_bring_in(row b, 1)",
                                            "elm_object_item_focus_set(row b, true)"));
    Forget();
    DefaultAppListRenderer::OnRealized(renderer.get(), nullptr, renderer->RowOf("a"));
    EXPECT_THAT(Log(), ElementsAre(Debug("Realized Item is: " + ALPHA)));
    EXPECT_THAT(ToolkitCalls(), IsEmpty());
}

TEST_F(DefaultAppListRendererFocus, MovedByTheViewerReachesTheModelAndItsListeners) {
    CountingListener other;
    model.AddItemSelectionListener(&other);
    ShowFocused({&a, &b}, &a);
    HeadlessToolkit::PressKey("Down");
    EXPECT_EQ(renderer->FocusedRow(), "b");
    EXPECT_EQ(model.selection, &b);
    EXPECT_EQ(other.selections, 1);
    EXPECT_THAT(model.history, ElementsAre("RemoveItemSelectionListener", "SetSelection(b)",
                                           "AddItemSelectionListener"));
    EXPECT_THAT(Log(), ElementsAre(Debug("Calling smart selection propagate: " + BETA),
                                   Debug("Propagate event up to data model")));
    EXPECT_EQ(model.selectionListeners.back(), static_cast<ItemSelectionListener*>(renderer.get()));
}

TEST_F(DefaultAppListRendererFocus, FollowsTheModelAfterAMoveThatTheModelCouldNotHandle) {
    ShowFocused({&a, &b, &c}, &a);
    model.onCall = [](const std::string& call) {
        if (call == "SetSelection(b)") {
            throw std::bad_alloc();
        }
    };
    HeadlessToolkit::PressKey("Down");
    EXPECT_THAT(Log(), Contains(Error("Callback aborted: std::bad_alloc", "GuardCallback")));
    model.Select(&c);
    EXPECT_EQ(renderer->FocusedRow(), "c");
}

TEST_F(DefaultAppListRendererFocus, LeavingADeletedRowDoesNotReachTheModel) {
    ShowFocused({&a, &b, &c}, &b);
    model.Show({&a, &c}, &c);
    HeadlessToolkit::Settle();
    EXPECT_EQ(renderer->FocusedRow(), "c");
    EXPECT_THAT(model.history, ElementsAre("GetAllItems", "GetSelection"));
}

TEST_F(DefaultAppListRendererFocus, ComesToTheSelectedRowWhenTheWindowReceivesIt) {
    model.Show({&a, &b, &c}, nullptr);
    model.Select(&a);
    model.Select(&c);
    HeadlessToolkit::Settle();
    HeadlessToolkit::GiveFocus(renderer->m_window);
    EXPECT_EQ(renderer->FocusedRow(), "c");
    EXPECT_THAT(model.history, Not(Contains(testing::StartsWith("SetSelection"))));
}

TEST_F(DefaultAppListRendererFocus, ComesToTheSelectedRowWhenTheWindowReceivesItBeforeARowIsDrawn) {
    model.Show({&a, &b, &c}, nullptr);
    model.Select(&a);
    model.Select(&c);
    HeadlessToolkit::GiveFocus(renderer->m_window);
    EXPECT_EQ(renderer->FocusedRow(), "c");
    EXPECT_THAT(model.history, Not(Contains(testing::StartsWith("SetSelection"))));
}

TEST_F(DefaultAppListRendererFocus, ComesToTheRowThatWasSelectedWhileTheWindowWasNotFocused) {
    ShowFocused({&a, &b, &c}, &a);
    HeadlessToolkit::TakeFocus(renderer->m_window);
    model.Select(&c);
    Forget();
    HeadlessToolkit::GiveFocus(renderer->m_window);
    EXPECT_EQ(renderer->FocusedRow(), "c");
    EXPECT_EQ(model.selection, &c);
    EXPECT_THAT(model.history, IsEmpty());
}

TEST_F(DefaultAppListRendererFocus, DoesNotVisitOtherRowsWhileTheListIsCleared) {
    ShowFocused({&a, &b, &c}, &b);
    model.Show({}, nullptr);
    EXPECT_EQ(elm_object_focus_get(renderer->m_genlist), EINA_FALSE);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Received item modification event"), Debug("Clearing applist")));
}

TEST_F(DefaultAppListRendererFocus, IsDestroyedSilentlyWithTheWindow) {
    ShowFocused({&a, &b}, &b);
    renderer.reset();
    EXPECT_THAT(model.history,
                ElementsAre("RemoveItemSelectionListener", "RemoveItemChangeListener"));
    HeadlessToolkit::Settle();
}

TEST_F(DefaultAppListRendererFocus, IsDroppedWithARendererDestroyedBeforeItsFirstRowsAreShown) {
    HeadlessToolkit::GiveFocus(renderer->m_window);
    model.Show({&a, &b}, &b);
    ASSERT_TRUE(HeadlessToolkit::RunUntil(
        [] { return testing::Value(LogMessages(), Contains("Realized Item is: " + ALPHA)); }));
    renderer.reset();
    HeadlessToolkit::Settle();
}

// Focus nodes that the toolkit keeps for deleted rows.
class RowsThatAreGone : public RendererTest {
protected:
    RowsThatAreGone() { HeadlessToolkit::GiveFocus(renderer->m_window); }

    /// Shows these items, the first one selected, and draws them.
    void ShowDrawn(const std::vector<AppListItem*>& items) {
        model.Show(items, items.front());
        HeadlessToolkit::Settle();
        EXPECT_EQ(renderer->FocusedRow(), items.front()->GetUnigueId());
    }

    int FocusNodes() const {
        int nodes = 0;
        const auto free = [](Eina_Iterator* iterator) { eina_iterator_free(iterator); };
        const std::unique_ptr<Eina_Iterator, decltype(free)> children(
            efl_children_iterator_new(renderer->m_genlist), free);
        for (void* child = nullptr; eina_iterator_next(children.get(), &child) != EINA_FALSE;) {
            nodes += efl_class_name_get(static_cast<Eo*>(child)) ==
                             std::string_view("Efl.Ui.Focus.Composition_Adapter")
                         ? 1
                         : 0;
        }
        return nodes;
    }
};

TEST_F(RowsThatAreGone, LeaveAtMostOneFocusNodeAfterAnyNumberOfClears) {
    for (int time = 0; time < 20; ++time) {
        ShowDrawn({&a, &b, &c});
        EXPECT_GE(FocusNodes(), 1);
        EXPECT_LE(FocusNodes(), 2);
        model.Show({}, nullptr);
    }
}

TEST_F(RowsThatAreGone, DoNotRemoveFocusNodesOfExistingRows) {
    ShowDrawn({&a, &b, &c});
    ASSERT_EQ(FocusNodes(), 1);
    model.Show({&b, &c}, &c);
    HeadlessToolkit::Settle();
    EXPECT_EQ(FocusNodes(), 1);
    HeadlessToolkit::PressKey("Up");
    EXPECT_EQ(renderer->FocusedRow(), "b");
}

}  // namespace
}  // namespace applist::test
