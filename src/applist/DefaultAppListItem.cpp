// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/DefaultAppListItem.h"

DefaultAppListItem::DefaultAppListItem(const std::string& visibleName, const std::string& uniqueId)
    : m_visibleName(visibleName), m_uniqueId(uniqueId) {}

std::string DefaultAppListItem::GetVisibleName() {
    return m_visibleName;
}

std::string DefaultAppListItem::GetUnigueId() {
    return m_uniqueId;
}
