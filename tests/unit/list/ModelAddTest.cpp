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
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"), Event("view changed [a b]"),
                            Debug("There is not selected item. Make newly added Item selected"),
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

TEST_F(DefaultAppListModelAddItems, OfListedIdsOnlyStillSelectsTheFrontWhenNothingIsSelected) {
    Fill({&a, &b}, nullptr);
    model.AddItems({&b});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, OfNothingStillSelectsTheFrontWhenNothingIsSelected) {
    Fill({&a, &b}, nullptr);
    model.AddItems({});
    EXPECT_THAT(Log(),
                ElementsAre(Debug("AddItems"),
                            Debug("There is not selected item. Make newly added Item selected"),
                            Event("view selected [a* b]")));
}

TEST_F(DefaultAppListModelAddItems, OfNothingToAnEmptyListKeepsTheEmptySelection) {
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

TEST_F(DefaultAppListModelAddItems, PutsItsNameOnItsLines) {
    model.AddItems({&a});
    EXPECT_THAT(LogFunctions(), ElementsAre("AddItems", "AddItems"));
}

using DefaultAppListModelAddItemAtEnd = ModelFixture;

TEST_F(DefaultAppListModelAddItemAtEnd, AppendsAndSelectsTheArgument) {
    model.AddItemAtEnd(&a);
    EXPECT_EQ(model.GetSelection(), &a);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("New applist item is: [name: Alpha, unique id: a]"),
                            Event("view changed [a]"),
                            Debug("There is not selected item. Make newly added Item selected"),
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

TEST_F(DefaultAppListModelAddItemAtEnd, PutsItsNameOnItsLines) {
    model.AddItemAtEnd(&a);
    EXPECT_THAT(LogFunctions(), ElementsAre("AddItemAtEnd", "AddItemAtEnd"));
}

}  // namespace
}  // namespace applist::test
