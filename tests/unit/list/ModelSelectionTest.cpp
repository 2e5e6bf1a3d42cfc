// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "unit/list/ModelFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using DefaultAppListModelSelection = ModelFixture;

TEST_F(DefaultAppListModelSelection, MovesToAListedItemAndSaysSo) {
    Fill({&a, &b, &c}, &a);
    model.SetSelection(&b);
    EXPECT_EQ(model.GetSelection(), &b);
    EXPECT_THAT(Log(), ElementsAre(Event("view selected [a b* c]")));
}

TEST_F(DefaultAppListModelSelection, StaysWhenTheIdIsNotListed) {
    Fill({&a, &b}, &a);
    model.SetSelection(&c);
    EXPECT_EQ(model.GetSelection(), &a);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelSelection, IsClearedSilentlyByNull) {
    Fill({&a, &b}, &b);
    model.SetSelection(nullptr);
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelSelection, IsClearedSilentlyByAnEmptyId) {
    Fill({&a, &b}, &b);
    model.SetSelection(&noItem);
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
    EXPECT_NE(model.GetSelection(), &noItem);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelSelection, IsTheListedObjectAndNotTheArgument) {
    Fill({&a, &b}, &a);
    DefaultAppListItem alsoB("another object", "b");
    model.SetSelection(&alsoB);
    EXPECT_EQ(model.GetSelection(), &b);
    EXPECT_THAT(Log(), ElementsAre(Event("view selected [a b*]")));
}

TEST_F(DefaultAppListModelSelection, OfTheSelectedIdAgainChangesNothing) {
    Fill({&a, &b}, &b);
    DefaultAppListItem alsoB("another object", "b");
    model.SetSelection(&alsoB);
    EXPECT_EQ(model.GetSelection(), &b);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelSelection, OfTwoEqualIdsIsTheFirst) {
    Fill({&a, &b, &c}, &a);
    DefaultAppListItem alsoC("another object", "c");
    model.ModifyItem(&b, &alsoC);
    ClearLog();
    model.SetSelection(&c);
    EXPECT_EQ(model.GetSelection(), &alsoC);
    EXPECT_THAT(Log(), ElementsAre(Event("view selected [a c* c]")));
}

using DefaultAppListModelClick = ModelFixture;

TEST_F(DefaultAppListModelClick, IsLoggedAndReported) {
    Fill({&a, &b}, &a);
    model.SetClicked(&b);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Menu item clicked: [name: Beta, unique id: b]", "SetClicked"),
                            Debug("Number of clicked listeners: 1", "SetClicked"),
                            Event("view clicked [a* b]")));
}

TEST_F(DefaultAppListModelClick, CountsItsListeners) {
    RecordingListener second("second");
    model.AddItemClickedListener(&second);
    ClearLog();
    model.SetClicked(&a);
    EXPECT_THAT(Log(), ElementsAre(Debug("Menu item clicked: [name: Alpha, unique id: a]"),
                                   Debug("Number of clicked listeners: 2"),
                                   Event("view clicked []"), Event("second clicked []")));
}

using DefaultAppListModelNearest = ModelFixture;

TEST_F(DefaultAppListModelNearest, IsNothingInAListOfNone) {
    EXPECT_EQ(model.FindNearestItem(&a), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Debug("Item list is empty or there is one item that can not "
                                         "be qualified as nearest")));
}

TEST_F(DefaultAppListModelNearest, IsNothingInAListOfOne) {
    Fill({&a}, &a);
    EXPECT_EQ(model.FindNearestItem(&a), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Debug("Item list is empty or there is one item that can not "
                                         "be qualified as nearest")));
}

TEST_F(DefaultAppListModelNearest, IsNothingSilentlyForAnUnlistedItem) {
    Fill({&a, &b}, &a);
    EXPECT_EQ(model.FindNearestItem(&c), nullptr);
    EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(DefaultAppListModelNearest, IsTheFollowingItemWhereThereIsOne) {
    Fill({&a, &b, &c}, &a);
    EXPECT_EQ(model.FindNearestItem(&a), &b);
    EXPECT_EQ(model.FindNearestItem(&b), &c);
    EXPECT_THAT(Log(),
                ElementsAre(Debug("Next element is nearest"), Debug("Next element is nearest")));
}

TEST_F(DefaultAppListModelNearest, IsThePrecedingItemAtTheEnd) {
    Fill({&a, &b, &c}, &a);
    EXPECT_EQ(model.FindNearestItem(&c), &b);
    EXPECT_THAT(Log(), ElementsAre(Debug("Previous element is nearest")));
}

TEST_F(DefaultAppListModelNearest, GoesById) {
    Fill({&a, &b}, &a);
    DefaultAppListItem alsoA("another object", "a");
    EXPECT_EQ(model.FindNearestItem(&alsoA), &b);
}

}  // namespace
}  // namespace applist::test
