// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <deque>
#include <set>
#include <string>

#include "feed/Feed.h"
#include "feed/ListUpdate.h"
#include "middleware/Watch.h"

namespace applist::sim {

/// Fills the list of every application that sends LocalCreated, then watches. Applies the changes
/// of the feed over time, starting when the first list is filled.
///
/// The application sends LocalCreated to each middleware that it has connected. The handshake alone
/// is not sufficient: announcements are broadcast, so one that another middleware caused looks like
/// ours. Calls before LocalCreated are answered, but their events are lost.
class Serve : public Watch {
public:
    Serve(SessionOptions options, Feed feed);

protected:
    void OnDisconnected(const std::string& application) override;
    void OnNotified(const std::string& application, const Notification& notification) override;

private:
    void Fill(const std::string& application);
    void OnFilled(const std::string& application, size_t count);
    void ScheduleChange();
    void OnChange();
    void Update(const std::string& application, const ListUpdate& update);
    static int cb_Change(void* serve) noexcept;

    Items m_items;
    std::deque<FeedStep> m_changes;  ///< Changes that are still to be made.
    Registration m_clock;
    bool m_playing = false;
    std::set<std::string> m_filled;  ///< Connected applications whose list was filled.
};

}  // namespace applist::sim
