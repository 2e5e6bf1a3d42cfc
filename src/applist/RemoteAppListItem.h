// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <iosfwd>
#include <string>

#include "applist/AppListItem.h"

/// The item that crosses the wire to the middleware and back.
///
/// Its wire form is the visible name followed by the unique id, each as an unsigned 32-bit length,
/// least significant byte first, and that many bytes of any value. Items stand back to back with
/// nothing between them.
class RemoteAppListItem : public AppListItem {
public:
    /// Name and id both empty.
    RemoteAppListItem() = default;
    /// Takes over the name and the id that item has now.
    explicit RemoteAppListItem(AppListItem& item);

    std::string GetVisibleName() override;
    std::string GetUnigueId() override;

    /// Writes the wire form of item. A string too long for its length field sets the fail state
    /// and writes nothing.
    friend std::ostream& operator<<(std::ostream& out, const RemoteAppListItem& item);

    /// Reads one item, leaving the stream right behind it. Where the stream holds no complete item
    /// the fail state is set and item is unchanged. Memory is taken only for bytes that arrived,
    /// whatever length they announce. Works on streams that cannot seek.
    friend std::istream& operator>>(std::istream& in, RemoteAppListItem& item);

private:
    std::string m_visibleName;
    std::string m_uniqueId;
};
