// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>

#include "applist/AppList.h"
#include "applist/AppListControl.h"
#include "applist/AppListRenderer.h"
#include "applist/DefaultAppListItem.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/RecordingListModel.h"
#include "fakes/RecordingListener.h"

using testing::ElementsAre;

namespace applist::test {
namespace {

/// A renderer or a control that notes the model that it receives.
template <typename Interface>
class View : public Interface {
public:
    explicit View(std::string name) : m_name(std::move(name)) {}
    void SetModel(AppListModel* given) override {
        Note(m_name + " SetModel");
        model = given;
    }
    AppListModel* model = nullptr;

private:
    std::string m_name;
};

class AppListFacade : public testing::Test {
protected:
    AppListFacade() {
        ClearLog();
        list = std::make_unique<AppList>(&model, &renderer, &control);
    }

    RecordingListModel model;
    View<AppListRenderer> renderer{"renderer"};
    View<AppListControl> control{"control"};
    std::unique_ptr<AppList> list;
    DefaultAppListItem item{"Alpha", "a"};
    RecordingListener listener{"listener"};
};

TEST_F(AppListFacade, ConnectsTheRendererAndThenTheControlAndDeletesNeither) {
    EXPECT_EQ(renderer.model, &model);
    EXPECT_EQ(control.model, &model);
    list.reset();
    // All three objects still exist.
    renderer.SetModel(nullptr);
    control.SetModel(nullptr);
    model.RemoveAllItems();
    EXPECT_EQ(LogText(), Lines({"renderer SetModel", "control SetModel", "renderer SetModel",
                                "control SetModel", "RemoveAllItems"}));
}

TEST_F(AppListFacade, ForwardsEachCallToTheModel) {
    ClearLog();
    model.selection = &item;
    EXPECT_EQ(list->GetSelection(), &item);
    list->RemoveAllItems();
    list->AddItems({&item, nullptr});
    list->AddItemAtEnd(&item);
    EXPECT_THAT(model.added, ElementsAre(&item, nullptr));
    EXPECT_EQ(model.item, &item);
    EXPECT_EQ(LogText(), Lines({"GetSelection", "RemoveAllItems", "AddItems", "AddItemAtEnd"}));
}

TEST_F(AppListFacade, ForwardsRegistrationsAndTheirEnd) {
    const auto expectForwarded = [this] {
        EXPECT_EQ(std::exchange(model.selectionListener, nullptr), &listener);
        EXPECT_EQ(std::exchange(model.changeListener, nullptr), &listener);
        EXPECT_EQ(std::exchange(model.clickListener, nullptr), &listener);
    };
    ClearLog();
    list->AddItemSelectionListener(&listener);
    list->AddItemChangeListener(&listener);
    list->AddItemClickedListener(&listener);
    expectForwarded();
    list->RemoveItemSelectionListener(&listener);
    list->RemoveItemChangeListener(&listener);
    list->RemoveItemClickedListener(&listener);
    expectForwarded();
    EXPECT_EQ(LogText(), Lines({"AddItemSelectionListener", "AddItemChangeListener",
                                "AddItemClickedListener", "RemoveItemSelectionListener",
                                "RemoveItemChangeListener", "RemoveItemClickedListener"}));
}

}  // namespace
}  // namespace applist::test
