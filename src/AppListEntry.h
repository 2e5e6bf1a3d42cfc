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

/// The list application: builds the object graph of the list when the platform starts it, owns the
/// graph, and takes it down when the platform ends it. Main thread only.
class AppListEntry {
public:
    /// Builds nothing yet. appId becomes the window's name.
    explicit AppListEntry(const std::string& appId);
    ~AppListEntry();
    AppListEntry(const AppListEntry&) = delete;
    AppListEntry& operator=(const AppListEntry&) = delete;
    AppListEntry(AppListEntry&&) = delete;
    AppListEntry& operator=(AppListEntry&&) = delete;

    // The platform's lifecycle callbacks; data is the entry.

    /// Builds the graph. Returns false, which abandons the start, without an entry.
    static bool Create(void* data);
    /// Takes the graph down.
    static void Terminate(void* data);
    static void Pause(void* data);
    static void Resume(void* data);
    /// A launch request: the first one shows the list, any later one closes it.
    static void Service(app_control_s* request, void* data);

private:
    void Build();
    /// Returns 0, or a number that makes Service() end the application. What the request carries
    /// is of no interest: launching is all there is to ask for.
    int HandleService(app_control_s* request);
    void HandleCmd();
    /// Deletes what was built, views before the models that they observe. May be called again.
    void Delete();

    std::string m_appId;
    AppList* m_list = nullptr;
    DefaultAppListModel* m_defaultModel = nullptr;
    LocalAppListModel* m_localModel = nullptr;
    DefaultAppListRenderer* m_renderer = nullptr;
    DefaultAppListControl* m_control = nullptr;
    bool m_launched = false;
};
