// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <vector>

#include <gmock/gmock.h>

#include "applist/DefaultAppListItem.h"
#include "applist/DefaultAppListModel.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/RecordingListener.h"

namespace applist::test {

/// A change listener that selects an item, or clears the selection if the item is null.
class Selecting : public ItemChangeListener {
public:
    explicit Selecting(AppListItem* item) : m_item(item) {}
    void ItemChanged(AppListModel* model) override { model->SetSelection(m_item); }

private:
    AppListItem* m_item;
};

/// A model with one listener, and items for it.
class ModelFixture : public testing::Test {
protected:
    ModelFixture() {
        view.ListenTo(model);
        ClearLog();
    }

    /// Lists the items, selects the given one (null clears the selection) and clears the log.
    void Fill(const std::vector<AppListItem*>& items, AppListItem* selection) {
        model.AddItems(items);
        model.SetSelection(selection);
        ClearLog();
    }

    DefaultAppListItem a{"Alpha", "a"};
    DefaultAppListItem b{"Beta", "b"};
    DefaultAppListItem c{"Gamma", "c"};
    DefaultAppListItem noItem;
    RecordingListener view{"view"};
    DefaultAppListModel model;
};

}  // namespace applist::test
