// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "applist/AppList.h"
#include "applist/AppListControl.h"
#include "applist/AppListRenderer.h"
#include "applist/DefaultAppListItem.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/RecordingListModel.h"
#include "fakes/RecordingListener.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace applist::test {
namespace {

class FakeRenderer : public AppListRenderer {
public:
    void SetModel(AppListModel* given) override {
        Note("renderer SetModel");
        model = given;
    }
    AppListModel* model = nullptr;
};

class FakeControl : public AppListControl {
public:
    void SetModel(AppListModel* given) override {
        Note("control SetModel");
        model = given;
    }
    AppListModel* model = nullptr;
};

class AppListFacade : public testing::Test {
protected:
    AppListFacade() {
        ClearLog();
        list = std::make_unique<AppList>(&model, &renderer, &control);
    }

    RecordingListModel model;
    FakeRenderer renderer;
    FakeControl control;
    std::unique_ptr<AppList> list;
    DefaultAppListItem item{"Alpha", "a"};
    RecordingListener listener{"listener"};
};

TEST_F(AppListFacade, ConnectsTheRendererAndThenTheControl) {
    EXPECT_THAT(Log(), ElementsAre(Event("renderer SetModel"), Event("control SetModel")));
    EXPECT_EQ(renderer.model, &model);
    EXPECT_EQ(control.model, &model);
}

TEST_F(AppListFacade, DeletesNoneOfItsObjectsAtItsEnd) {
    ClearLog();
    list.reset();
    EXPECT_THAT(Log(), IsEmpty());
    // All three objects still exist.
    renderer.SetModel(nullptr);
    control.SetModel(nullptr);
    model.RemoveAllItems();
    EXPECT_THAT(Log(), ElementsAre(Event("renderer SetModel"), Event("control SetModel"),
                                   Event("RemoveAllItems")));
}

TEST_F(AppListFacade, ForwardsTheChangesOfTheList) {
    ClearLog();
    list->RemoveAllItems();
    list->AddItems({&item, nullptr});
    list->AddItemAtEnd(&item);
    EXPECT_THAT(Log(),
                ElementsAre(Event("RemoveAllItems"), Event("AddItems"), Event("AddItemAtEnd")));
    EXPECT_THAT(model.added, ElementsAre(&item, nullptr));
    EXPECT_EQ(model.item, &item);
}

TEST_F(AppListFacade, ReturnsTheModelsSelection) {
    model.selection = &item;
    ClearLog();
    EXPECT_EQ(list->GetSelection(), &item);
    EXPECT_THAT(Log(), ElementsAre(Event("GetSelection")));
}

TEST_F(AppListFacade, ForwardsRegistrations) {
    ClearLog();
    list->AddItemSelectionListener(&listener);
    list->AddItemChangeListener(&listener);
    list->AddItemClickedListener(&listener);
    EXPECT_THAT(Log(),
                ElementsAre(Event("AddItemSelectionListener"), Event("AddItemChangeListener"),
                            Event("AddItemClickedListener")));
    EXPECT_EQ(model.selectionListener, &listener);
    EXPECT_EQ(model.changeListener, &listener);
    EXPECT_EQ(model.clickListener, &listener);
}

TEST_F(AppListFacade, ForwardsTheEndOfRegistrations) {
    ClearLog();
    list->RemoveItemSelectionListener(&listener);
    list->RemoveItemChangeListener(&listener);
    list->RemoveItemClickedListener(&listener);
    EXPECT_THAT(Log(),
                ElementsAre(Event("RemoveItemSelectionListener"), Event("RemoveItemChangeListener"),
                            Event("RemoveItemClickedListener")));
    EXPECT_EQ(model.selectionListener, &listener);
    EXPECT_EQ(model.changeListener, &listener);
    EXPECT_EQ(model.clickListener, &listener);
}

}  // namespace
}  // namespace applist::test
