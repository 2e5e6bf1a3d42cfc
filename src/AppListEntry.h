// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>

class AppList;
class DefaultAppListControl;
class DefaultAppListModel;
class DefaultAppListRenderer;
class LocalAppListModel;
struct app_control_s;

/// The list application: builds its object graph when the platform starts it, owns the graph, and
/// deletes it when the platform ends it. Main thread only.
class AppListEntry {
public:
    /// Does not build the graph yet. appId becomes the window's name.
    explicit AppListEntry(const std::string& appId);
    ~AppListEntry();
    AppListEntry(const AppListEntry&) = delete;
    AppListEntry& operator=(const AppListEntry&) = delete;
    AppListEntry(AppListEntry&&) = delete;
    AppListEntry& operator=(AppListEntry&&) = delete;

    // The platform's lifecycle callbacks; data is the AppListEntry.

    /// Builds the graph. Returns false, which abandons the start, if data is null or an exception
    /// occurs.
    static bool Create(void* data);
    /// Deletes the graph.
    static void Terminate(void* data);
    static void Pause(void* data);
    static void Resume(void* data);
    /// Handles a launch request: the first one shows the list, a later one closes it.
    static void Service(app_control_s* request, void* data);

private:
    void Build();
    /// Returns 0 on success; any other value makes Service() end the application. The content of
    /// the request is ignored.
    int HandleService(app_control_s* request);
    void HandleCmd();
    /// Deletes the graph: first the views, then the models that they observe. May be called
    /// repeatedly.
    void Delete();

    std::string m_appId;
    AppList* m_list = nullptr;
    DefaultAppListModel* m_defaultModel = nullptr;
    LocalAppListModel* m_localModel = nullptr;
    DefaultAppListRenderer* m_renderer = nullptr;
    DefaultAppListControl* m_control = nullptr;
    bool m_launched = false;
};
