// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>

#include "applist/AppListItem.h"

/// An item that is exchanged with the middleware.
///
/// Its wire form is the visible name followed by the unique id. Each is an unsigned 32-bit length,
/// least significant byte first, and that many bytes of any value. Consecutive items are not
/// separated.
class RemoteAppListItem : public AppListItem {
public:
    /// Name and id are empty.
    RemoteAppListItem() = default;
    /// Copies the current name and id of item.
    explicit RemoteAppListItem(AppListItem& item);

    std::string GetVisibleName() override;
    std::string GetUnigueId() override;

    /// Writes the wire form of item. If a string is too long for its length field, sets the fail
    /// state and does not write anything.
    friend std::ostream& operator<<(std::ostream& out, const RemoteAppListItem& item);

    /// Reads one item; the stream is then positioned after it. If the stream does not contain a
    /// complete item, sets the fail state and leaves item unchanged. Allocates memory only for
    /// bytes that have arrived, whatever length they announce. Works on streams that cannot seek.
    friend std::istream& operator>>(std::istream& in, RemoteAppListItem& item);

private:
    std::string m_visibleName;
    std::string m_uniqueId;
};
