// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <sstream>

#include "applist/RemoteAppListItem.h"
#include "fuzz/Properties.h"

namespace applist::test {

std::string CheckItemStream(std::string_view bytes) {
    std::istringstream in{std::string(bytes)};
    std::ostringstream written;
    RemoteAppListItem item;
    std::string name;
    std::string id;
    while (in >> item) {
        name = item.GetVisibleName();
        id = item.GetUnigueId();
        written << item;
    }
    if (item.GetVisibleName() != name || item.GetUnigueId() != id) {
        return "a failed read changed the item";
    }
    const std::string again = written.str();
    return bytes.substr(0, again.size()) == again ? "" : "items differ from the bytes they are of";
}

}  // namespace applist::test
