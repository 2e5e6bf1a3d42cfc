// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Focus nodes that the toolkit keeps for deleted rows.
#include <memory>

#include "ui/presentation/RendererFixture.h"

namespace applist::test {
namespace {

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
