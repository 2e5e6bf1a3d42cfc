// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/list/ModelFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using DefaultAppListModelRemoveItem = ModelFixture;

TEST_F(DefaultAppListModelRemoveItem, IgnoresAnUnlistedItem) {
    Fill({&a, &b}, &a);
    model.RemoveItem(&c);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelRemoveItem, SelectsTheNextItemWhenTheSelectedOneIsRemoved) {
    Fill({&a, &b, &c}, &b);
    model.RemoveItem(&b);
    EXPECT_EQ(model.GetSelection(), &c);
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Next element is nearest", "FindNearestItem"),
                    Debug("Found new item to be selected", "RemoveItem"),
                    Debug("Removed item form list", "RemoveItem"), Event("view changed [a c*]"),
                    Debug("Sent item change event", "RemoveItem"), Event("view selected [a c*]"),
                    Debug("Selection has been modified. Sent item selection event", "RemoveItem")));
}

TEST_F(DefaultAppListModelRemoveItem, SelectsThePreviousItemWhenTheSelectedLastOneIsRemoved) {
    Fill({&a, &b, &c}, &c);
    model.RemoveItem(&c);
    EXPECT_EQ(model.GetSelection(), &b);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Previous element is nearest", "FindNearestItem"),
                            Debug("Found new item to be selected"), Debug("Removed item form list"),
                            Event("view changed [a b*]"), Debug("Sent item change event"),
                            Event("view selected [a b*]"),
                            Debug("Selection has been modified. Sent item selection event")));
}

TEST_F(DefaultAppListModelRemoveItem, EmptiesTheSelectionWhenTheOnlyItemIsRemoved) {
    Fill({&a}, &a);
    model.RemoveItem(&a);
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Item list is empty or there is one item that can not be "
                                  "qualified as nearest",
                                  "FindNearestItem"),
                            Debug("Make empty selection", "RemoveItem"),
                            Debug("Removed item form list"), Event("view changed []"),
                            Debug("Sent item change event"), Event("view selected []"),
                            Debug("Selection has been modified. Sent item selection event")));
}

TEST_F(DefaultAppListModelRemoveItem, OfAnUnselectedItemSendsNoSelection) {
    Fill({&a, &b, &c}, &c);
    model.RemoveItem(&a);
    EXPECT_EQ(model.GetSelection(), &c);
    EXPECT_THAT(Log(), ElementsAre(Debug("Removed item form list"), Event("view changed [b c*]"),
                                   Debug("Sent item change event")));
}

TEST_F(DefaultAppListModelRemoveItem, GoesById) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({&a, &b}, &b);
    model.RemoveItem(&alsoA);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&b));
}

TEST_F(DefaultAppListModelRemoveItem, MovesASelectionThatIsItselfUnlisted) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({&a, &b}, nullptr);
    model.AddItemAtEnd(&alsoA);
    ASSERT_EQ(model.GetSelection(), &alsoA);
    model.RemoveItem(&a);
    EXPECT_EQ(model.GetSelection(), &b);
}

TEST_F(DefaultAppListModelRemoveItem, DecidesBeforeTheChangeWhetherToReportASelection) {
    Fill({&a, &b, &c}, &a);
    Selecting nothing(nullptr);
    model.AddItemChangeListener(&nothing);
    ClearLog();
    model.RemoveItem(&b);
    EXPECT_THAT(Log(), ElementsAre(Debug("Removed item form list"), Event("view changed [a* c]"),
                                   Debug("Sent item change event")));
    model.SetSelection(&a);
    ClearLog();
    model.RemoveItem(&a);
    EXPECT_THAT(Log(), Contains(Event("view selected [c]")));
}

using DefaultAppListModelRemoveAllItems = ModelFixture;

TEST_F(DefaultAppListModelRemoveAllItems, OfAnEmptyListDoesNothing) {
    model.RemoveAllItems();
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelRemoveAllItems, ReportsTheChangeAndThenTheSelection) {
    Fill({&a, &b}, &b);
    model.RemoveAllItems();
    EXPECT_EQ(model.GetItemsCount(), 0);
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
    EXPECT_THAT(Log(), ElementsAre(Event("view changed []"), Event("view selected []")));
}

TEST_F(DefaultAppListModelRemoveAllItems, ReportsASelectionEvenWhenNothingWasSelected) {
    Fill({&a}, nullptr);
    model.RemoveAllItems();
    EXPECT_THAT(Log(), ElementsAre(Event("view changed []"), Event("view selected []")));
}

}  // namespace
}  // namespace applist::test
