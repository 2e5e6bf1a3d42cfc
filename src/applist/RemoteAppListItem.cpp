// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "applist/RemoteAppListItem.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <istream>
#include <limits>
#include <ostream>
#include <utility>

#include "LittleEndian.h"

namespace {

// A length has 32 bits on the wire. A longer text would be cut without a trace.
bool FitsTheWire(const std::string& text) {
    return text.size() <= std::numeric_limits<std::uint32_t>::max();
}

void WriteString(std::ostream& out, const std::string& text) {
    const auto length = applist::ToLittleEndian(static_cast<std::uint32_t>(text.size()));
    out.write(length.data(), length.size());
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
}

// Reads through a fixed buffer, so that a wrong length does not allocate memory: the string grows
// only by the bytes that the stream contains.
bool ReadBytes(std::istream& in, std::size_t count, std::string& text) {
    std::array<char, 4096> piece;  // NOLINT(*-member-init): read() fills it
    while (count > 0) {
        const std::size_t size = std::min(count, piece.size());
        if (!in.read(piece.data(), static_cast<std::streamsize>(size))) {
            return false;
        }
        text.append(piece.data(), size);
        count -= size;
    }
    return true;
}

bool ReadString(std::istream& in, std::string& text) {
    std::array<char, applist::WIRE_NUMBER_SIZE> length{};
    return in.read(length.data(), length.size()) &&
           ReadBytes(in, applist::FromLittleEndian(length), text);
}

}  // namespace

RemoteAppListItem::RemoteAppListItem(AppListItem& item)
    : m_visibleName(item.GetVisibleName()), m_uniqueId(item.GetUnigueId()) {}

std::string RemoteAppListItem::GetVisibleName() {
    return m_visibleName;
}

std::string RemoteAppListItem::GetUnigueId() {
    return m_uniqueId;
}

std::ostream& operator<<(std::ostream& out, const RemoteAppListItem& item) {
    // Both are checked before writing, so that a part of an item is never written.
    if (!FitsTheWire(item.m_visibleName) || !FitsTheWire(item.m_uniqueId)) {
        out.setstate(std::ios_base::failbit);
        return out;
    }
    WriteString(out, item.m_visibleName);
    WriteString(out, item.m_uniqueId);
    return out;
}

std::istream& operator>>(std::istream& in, RemoteAppListItem& item) {
    std::string visibleName;
    std::string uniqueId;
    // Assigned only if both are complete, so that a failed read leaves item unchanged.
    if (ReadString(in, visibleName) && ReadString(in, uniqueId)) {
        item.m_visibleName = std::move(visibleName);
        item.m_uniqueId = std::move(uniqueId);
    }
    return in;
}
