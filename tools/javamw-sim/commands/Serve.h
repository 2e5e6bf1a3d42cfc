// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <set>
#include <string>

#include "commands/Watch.h"
#include "protocol/Item.h"

namespace applist::sim {

/// Fills the list of every application that reports its list, then watches.
///
/// That report is what the application sends to each middleware once it has connected it. The
/// handshake alone does not tell: its announcements reach everybody, and one that another
/// middleware caused looks like ours. Calls made too early are served, but their events go astray.
class Serve : public Watch {
public:
    Serve(SessionOptions options, Items items);

protected:
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;

private:
    void Fill(const std::string& application);

    Items m_items;
    std::set<std::string> m_filled;  ///< Applications of now.
};

}  // namespace applist::sim
