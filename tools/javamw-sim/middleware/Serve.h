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

/// Fills the list of every application that reports its list, then watches and changes the lists
/// as the feed does in the course of time, which begins when the first list is filled.
///
/// That report is what the application sends to each middleware once it has connected it. The
/// handshake alone does not tell: its announcements reach everybody, and one that another
/// middleware caused looks like ours. Calls made too early are served, but their events go astray.
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
    std::deque<FeedStep> m_changes;  ///< Those to come.
    Registration m_clock;
    bool m_playing = false;
    std::set<std::string> m_filled;  ///< Applications of now.
};

}  // namespace applist::sim
