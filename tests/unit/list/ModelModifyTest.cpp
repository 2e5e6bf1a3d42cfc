// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/list/ModelFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using DefaultAppListModelModifyItem = ModelFixture;

TEST_F(DefaultAppListModelModifyItem, MovesTheSelectionToTheReplacement) {
    Fill({&a, &b}, &b);
    model.ModifyItem(&b, &c);
    EXPECT_EQ(model.GetSelection(), &c);
    EXPECT_THAT(
        Log(),
        ElementsAre(Debug("Selection cleared", "ModifyItem"), Debug("Replaced item", "ModifyItem"),
                    Event("view changed [a c*]"), Debug("Sent item change event", "ModifyItem"),
                    Event("view selected [a c*]"),
                    Debug("Selection has been modified. Sent item selection event", "ModifyItem")));
}

TEST_F(DefaultAppListModelModifyItem, KeepsThePlaceOfAnUnselectedItem) {
    Fill({&a, &b}, &b);
    model.ModifyItem(&a, &c);
    EXPECT_EQ(model.GetSelection(), &b);
    EXPECT_THAT(Log(), ElementsAre(Debug("Replaced item"), Event("view changed [c b*]"),
                                   Debug("Sent item change event")));
}

TEST_F(DefaultAppListModelModifyItem, IgnoresAnUnlistedItem) {
    Fill({&a}, &a);
    model.ModifyItem(&b, &c);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a));
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelModifyItem, DoesNotLookForTheNewIdElsewhere) {
    DefaultAppListItem alsoB("another object", "b");
    Fill({&a, &b}, &b);
    model.ModifyItem(&a, &alsoB);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&alsoB, &b));
}

TEST_F(DefaultAppListModelModifyItem, CanKeepTheId) {
    DefaultAppListItem renamed("New name", "a");
    Fill({&a, &b}, &a);
    model.ModifyItem(&a, &renamed);
    EXPECT_EQ(model.GetSelection(), &renamed);
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&renamed, &b));
}

TEST_F(DefaultAppListModelModifyItem, MovesASelectionThatIsAnotherObjectWithTheId) {
    DefaultAppListItem alsoA("another object", "a");
    Fill({&a, &b}, nullptr);
    model.AddItemAtEnd(&alsoA);
    ASSERT_EQ(model.GetSelection(), &alsoA);
    model.ModifyItem(&a, &c);
    EXPECT_EQ(model.GetSelection(), &c);
}

TEST_F(DefaultAppListModelModifyItem, DecidesBeforeTheChangeWhetherToReportASelection) {
    Fill({&a, &b}, &a);
    Selecting nothing(nullptr);
    model.AddItemChangeListener(&nothing);
    model.ModifyItem(&a, &c);
    EXPECT_THAT(Log(), Contains(Event("view selected [c b]")));
}

TEST(DefaultAppListModelWithoutListeners, LogsTheChangeEventAnyway) {
    DefaultAppListItem a("Alpha", "a");
    DefaultAppListItem b("Beta", "b");
    DefaultAppListModel model;
    model.AddItems({&a});
    ClearLog();
    model.ModifyItem(&a, &b);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Selection cleared"), Debug("Replaced item"),
                            Debug("Sent item change event"),
                            Debug("Selection has been modified. Sent item selection event")));
}

}  // namespace
}  // namespace applist::test
