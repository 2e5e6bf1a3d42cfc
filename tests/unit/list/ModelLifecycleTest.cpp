// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>

#include "support/AllocationWatch.h"
#include "unit/list/ModelFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

using DefaultAppListModelLifecycle = ModelFixture;

TEST_F(DefaultAppListModelLifecycle, BeginsWithoutItemsAndWithAnEmptySelection) {
    EXPECT_EQ(model.GetItemsCount(), 0);
    EXPECT_THAT(model.GetAllItems(), IsEmpty());
    ASSERT_NE(model.GetSelection(), nullptr);
    EXPECT_EQ(model.GetSelection()->GetVisibleName(), "");
    EXPECT_EQ(model.GetSelection()->GetUnigueId(), "");
}

TEST_F(DefaultAppListModelLifecycle, HandsOutACopyOfItsList) {
    Fill({&a, &b}, &a);
    std::vector<AppListItem*> items = model.GetAllItems();
    items.clear();
    EXPECT_THAT(model.GetAllItems(), ElementsAre(&a, &b));
    EXPECT_EQ(model.GetItemsCount(), 2);
}

/// An item that notes its destruction.
class RecordedItem : public DefaultAppListItem {
public:
    using DefaultAppListItem::DefaultAppListItem;
    RecordedItem(const RecordedItem&) = delete;
    RecordedItem& operator=(const RecordedItem&) = delete;
    RecordedItem(RecordedItem&&) = delete;
    RecordedItem& operator=(RecordedItem&&) = delete;
    ~RecordedItem() override { Note("deleted " + GetUnigueId()); }
};

TEST_F(DefaultAppListModelLifecycle, NeverDeletesAnItem) {
    auto item = std::make_unique<RecordedItem>("Mortal", "m");
    auto replacement = std::make_unique<RecordedItem>("Mortal too", "n");
    auto* dying = new DefaultAppListModel;
    dying->AddItems({item.get()});
    dying->ModifyItem(item.get(), replacement.get());
    dying->RemoveItem(replacement.get());
    dying->AddItems({item.get()});
    dying->RemoveAllItems();
    dying->AddItems({item.get()});
    ClearLog();
    delete dying;
    EXPECT_THAT(Log(), IsEmpty());
    item.reset();
    EXPECT_THAT(Log(), ElementsAre(Event("deleted m")));
}

TEST_F(DefaultAppListModelLifecycle, DeletesItsEmptyItemWithoutNotifications) {
    auto* dying = new DefaultAppListModel;
    view.ListenTo(*dying);
    const void* emptyItem = dying->GetSelection();
    dying->AddItems({&a});
    ClearLog();
    const DeletionWatch watch([emptyItem](const void* block) {
        if (block == emptyItem) {
            Note("deleted the empty item");
        }
    });
    delete dying;
    EXPECT_THAT(Log(), ElementsAre(Event("deleted the empty item")));
}

}  // namespace
}  // namespace applist::test
