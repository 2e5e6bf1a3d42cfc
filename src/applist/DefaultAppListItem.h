// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

#include "applist/AppListItem.h"

/// An item with two strings that are fixed at construction.
class DefaultAppListItem : public AppListItem {
public:
    /// Name and id are empty: represents "no item".
    DefaultAppListItem() = default;
    DefaultAppListItem(const std::string& visibleName, const std::string& uniqueId);

    std::string GetVisibleName() override;
    std::string GetUnigueId() override;

private:
    const std::string m_visibleName;
    const std::string m_uniqueId;
};
