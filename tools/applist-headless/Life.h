// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "FocusedList.h"
#include "GlibHandles.h"
#include "Traffic.h"
#include "applist/AppList.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListModel.h"
#include "applist/LocalAppListModel.h"

namespace applist::headless {

/// One application from its start to its end: the program's model, key control and transport on a
/// bus connection, with a list that does not have a screen. At most one object at a time, because
/// the bus library would give all of them the same connection. Main thread only.
class Life {
public:
    /// Called in the default main context after the list, the selection or the partners may have
    /// changed, and when the application has asked for its end.
    using OnChange = std::function<void()>;

    /// Connects to the system bus and announces the application. Returns null and says why if the
    /// bus cannot be reached.
    static std::unique_ptr<Life> Start(const OnChange& onChange, std::string& problem);
    /// Ends like the application does. If the connection is closed, ends like one that was killed.
    ~Life();
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;

    AppListModel& model() { return m_model; }
    FocusedList& list() { return m_list; }
    Traffic::Counts Counts() const { return m_traffic.Read(); }
    std::string Name() const;
    /// True once the application has called ui_app_exit().
    bool EndAsked() const { return m_endAsked; }
    void AskForEnd();
    /// True if the bus has closed the connection.
    bool LostBus() const;
    /// Waits until all events are sent, so that they are counted.
    void Flush();
    /// Closes the connection without the messages of a normal end.
    void Disconnect();

private:
    struct Release {
        void operator()(GDBusConnection* connection) const;
    };
    using Connection = std::unique_ptr<GDBusConnection, Release>;

    Life(Connection connection, OnChange onChange);

    OnChange m_onChange;
    bool m_endAsked = false;
    Connection m_connection;
    Registration m_whenClosed;
    Traffic m_traffic;
    // In the order in which the program creates them.
    DefaultAppListModel m_items;
    LocalAppListModel m_model{&m_items};
    FocusedList m_list;
    DefaultAppListControl m_control;
    AppList m_appList{&m_model, &m_list, &m_control};
};

}  // namespace applist::headless
