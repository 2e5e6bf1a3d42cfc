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
#include "fakes/FakeListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/RecordingListener.h"

using testing::ElementsAre;
using testing::IsEmpty;

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
        model.onCall = [](const std::string& call) { Note(call); };
        list = std::make_unique<AppList>(&model, &renderer, &control);
    }

    FakeListModel model;
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
    EXPECT_EQ(LogText(), Lines({"GetSelection", "RemoveAllItems", "AddItems", "AddItemAtEnd(a)"}));
}

TEST_F(AppListFacade, ForwardsRegistrationsAndTheirEnd) {
    ClearLog();
    list->AddItemSelectionListener(&listener);
    list->AddItemChangeListener(&listener);
    list->AddItemClickedListener(&listener);
    EXPECT_THAT(model.selectionListeners, ElementsAre(&listener));
    EXPECT_THAT(model.changeListeners, ElementsAre(&listener));
    EXPECT_THAT(model.clickListeners, ElementsAre(&listener));
    list->RemoveItemSelectionListener(&listener);
    list->RemoveItemChangeListener(&listener);
    list->RemoveItemClickedListener(&listener);
    EXPECT_THAT(model.selectionListeners, IsEmpty());
    EXPECT_THAT(model.changeListeners, IsEmpty());
    EXPECT_THAT(model.clickListeners, IsEmpty());
    EXPECT_EQ(LogText(), Lines({"AddItemSelectionListener", "AddItemChangeListener",
                                "AddItemClickedListener", "RemoveItemSelectionListener",
                                "RemoveItemChangeListener", "RemoveItemClickedListener"}));
}

}  // namespace
}  // namespace applist::test
