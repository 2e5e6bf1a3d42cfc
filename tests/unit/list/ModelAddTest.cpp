// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/list/ModelFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using DefaultAppListModelAddItems = ModelFixture;

TEST_F(DefaultAppListModelAddItems, ReportsTheBatchOnceAndThenSelectsTheFront) {
    model.AddItems({&a, &b});
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_EQ(model.GetSelection(), &a);
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("AddItems", "AddItems"), Event("view changed [a b]"),
                    Debug("There is not selected item. Make newly added Item selected", "AddItems"),
                    Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, SkipsAnIdThatCameEarlierInTheSameBatch) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({}, nullptr);
    model.AddItems({&a, &b, &alsoA});
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("view changed [a b]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, LeavesASelectionAlone) {
    Fill({&a}, &a);
    model.AddItems({&b, &c});
    EXPECT_THAT(Log(), ElementsAre(Debug("AddItems"), Event("view changed [a* b c]")));
}

TEST_F(DefaultAppListModelAddItems, SelectsTheFrontOfTheWholeListWhenNothingIsSelected) {
    Fill({&a}, nullptr);
    model.AddItems({&b});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("view changed [a b]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, OfListedIdsOnlySendsNoChange) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({&a, &b}, &b);
    model.AddItems({&alsoA, &b});
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_THAT(Log(), ElementsAre(Debug("AddItems")));
}

TEST_F(DefaultAppListModelAddItems, WithoutItemsStillSelectsTheFrontWhenNothingIsSelected) {
    Fill({&a, &b}, nullptr);
    model.AddItems({});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, WithoutItemsKeepsTheEmptySelectionOfAnEmptyList) {
    model.AddItems({});
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
    EXPECT_THAT(Log(), ElementsAre(Debug("AddItems")));
}

TEST_F(DefaultAppListModelAddItems, TakesASelectedItemWithoutIdForNoSelection) {
    DefaultAppListItem nameless("", "");
    model.AddItems({&nameless});
    EXPECT_EQ(model.GetSelection(), &nameless);
    ClearLog();
    model.AddItems({&a});
    EXPECT_EQ(model.GetSelection(), &nameless);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("view changed [* a]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [* a]")));
}

TEST_F(DefaultAppListModelAddItems, KeepsASelectionThatAChangeListenerMakes) {
    Selecting listener(&b);
    model.AddItemChangeListener(&listener);
    model.AddItems({&a, &b});
    EXPECT_EQ(model.GetSelection(), &b);
}

TEST_F(DefaultAppListModelAddItems, SelectsTheFrontWhenAChangeListenerClearsTheSelection) {
    Fill({&a, &b}, &b);
    Selecting nothing(nullptr);
    model.AddItemChangeListener(&nothing);
    model.AddItems({&c});
    EXPECT_EQ(model.GetSelection(), &a);
}

using DefaultAppListModelAddItemAtEnd = ModelFixture;

TEST_F(DefaultAppListModelAddItemAtEnd, KeepsASelectionThatAChangeListenerMakes) {
    Fill({&a}, nullptr);
    Selecting listener(&a);
    model.AddItemChangeListener(&listener);
    model.AddItemAtEnd(&b);
    EXPECT_EQ(model.GetSelection(), &a);
}

TEST_F(DefaultAppListModelAddItemAtEnd, SelectsTheItemWhenAChangeListenerClearsTheSelection) {
    Fill({&a}, &a);
    Selecting nothing(nullptr);
    model.AddItemChangeListener(&nothing);
    model.AddItemAtEnd(&b);
    EXPECT_EQ(model.GetSelection(), &b);
}

TEST_F(DefaultAppListModelAddItemAtEnd, AppendsAndSelectsTheArgument) {
    model.AddItemAtEnd(&a);
    EXPECT_EQ(model.GetSelection(), &a);
    EXPECT_THAT(
        Log(),
        ElementsAre(
            Debug("New applist item is: [name: Alpha, unique id: a]", "AddItemAtEnd"),
            Event("view changed [a]"),
            Debug("There is not selected item. Make newly added Item selected", "AddItemAtEnd"),
            Event("view selected [a*]")));
}

TEST_F(DefaultAppListModelAddItemAtEnd, SelectsTheArgumentAndNotTheFront) {
    Fill({&a, &b}, nullptr);
    model.AddItemAtEnd(&c);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("New applist item is: [name: Gamma, unique id: c]"),
                            Event("view changed [a b c]"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a b c*]")));
}

TEST_F(DefaultAppListModelAddItemAtEnd, LeavesASelectionAlone) {
    Fill({&a}, &a);
    model.AddItemAtEnd(&b);
    EXPECT_THAT(Log(), ElementsAre(Debug("New applist item is: [name: Beta, unique id: b]"),
                                   Event("view changed [a* b]")));
}

TEST_F(DefaultAppListModelAddItemAtEnd, OfAListedIdDoesNothing) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({&a}, &a);
    model.AddItemAtEnd(&alsoA);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a));
    EXPECT_EQ(model.GetSelection(), &a);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelAddItemAtEnd, OfAListedIdSelectsTheDuplicateWhenNothingIsSelected) {
    DefaultAppListItem alsoB("another object", "b");
    Fill({&a, &b}, nullptr);
    model.AddItemAtEnd(&alsoB);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_EQ(model.GetSelection(), &alsoB);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a b] ~b")));
}

}  // namespace
}  // namespace applist::test
