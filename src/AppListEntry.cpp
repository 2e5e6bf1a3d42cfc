// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "AppListEntry.h"

#include <Elementary.h>

#include "CallbackGuard.h"
#include "Log.h"
#include "app.h"
#include "applist/AppList.h"
#include "applist/DefaultAppListControl.h"
#include "applist/DefaultAppListModel.h"
#include "applist/DefaultAppListRenderer.h"
#include "applist/LocalAppListModel.h"

namespace {

template <typename T>
void DeleteAndClear(T*& object) {
    delete object;
    object = nullptr;
}

}  // namespace

AppListEntry::AppListEntry(const std::string& appId) : m_appId(appId) {}

AppListEntry::~AppListEntry() {
    Delete();
}

bool AppListEntry::Create(void* data) {
    LOG_DEBUG("_create callback function calling");
    if (data == nullptr) {
        LOG_ERROR("service data is null");
        return false;
    }
    auto& entry = *static_cast<AppListEntry*>(data);
    const bool created = applist::GuardCallback(false, [&entry] {
        entry.Build();
        return true;
    });
    if (!created) {
        // Now, because the toolkit is shut down before the destructor runs.
        entry.Delete();
    }
    return created;
}

void AppListEntry::Build() {
    m_defaultModel = new DefaultAppListModel();
    // Created before the views, so that it is the first listener and the middleware receives each
    // event before the screen changes.
    m_localModel = new LocalAppListModel(m_defaultModel);
    m_renderer = new DefaultAppListRenderer(m_appId);
    m_control = new DefaultAppListControl();
    m_list = new AppList(m_localModel, m_renderer, m_control);
    m_launched = false;
}

void AppListEntry::Service(app_control_s* request, void* data) {
    LOG_DEBUG("_service callback function calling");
    if (data == nullptr) {
        LOG_ERROR("service data is null");
        return;
    }
    if (static_cast<AppListEntry*>(data)->HandleService(request) != 0) {
        LOG_ERROR("handle service failed");
        elm_exit();
    }
}

int AppListEntry::HandleService(app_control_s* /*request*/) {
    LOG_DEBUG("_handle_service function calling");
    // Every request means that the program was started, whatever data it contains.
    HandleCmd();
    return 0;
}

void AppListEntry::HandleCmd() {
    LOG_DEBUG("_handle_cmd function calling");
    if (m_launched) {
        // The first request belongs to the start of this process. A later one means that the
        // program was started again, which closes the list.
        LOG_DEBUG("Closing application by calling app_efl_exit()");
        ui_app_exit();
    }
    m_launched = true;
}

void AppListEntry::Pause(void* /*data*/) {
    LOG_DEBUG("_pause callback function calling");
}

void AppListEntry::Resume(void* /*data*/) {
    LOG_DEBUG("_resume callback function calling");
}

void AppListEntry::Terminate(void* data) {
    LOG_DEBUG("_terminate callback function calling");
    if (data != nullptr) {
        static_cast<AppListEntry*>(data)->Delete();
    }
}

void AppListEntry::Delete() {
    LOG_DEBUG("Delete");
    // The views unregister from the models, so they go before them.
    DeleteAndClear(m_list);
    DeleteAndClear(m_renderer);
    DeleteAndClear(m_control);
    // The local model must go first: it is a listener of the default model and owns items that the
    // default model still lists.
    DeleteAndClear(m_localModel);
    DeleteAndClear(m_defaultModel);
    m_launched = false;
}
