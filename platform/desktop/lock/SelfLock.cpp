// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "lock/SelfLock.h"

#include <Ecore.h>
#include <Ecore_Evas.h>
#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include <sys/prctl.h>

#include "CallbackGuard.h"
#include "accessibility/Voice.h"
#include "data/FilePaths.h"
#include "launch/SessionBus.h"
#include "lock/CallFilter.h"
#include "lock/FileRules.h"
#include "toolkit-internals/ToolkitFiles.h"

namespace applist::desktop {
namespace {

constexpr std::string_view X11 = "software_x11";
constexpr std::string_view WAYLAND = "wayland_shm";

// False once a frame was drawn, because the first one decides for the whole process.
bool g_wanted = true;

bool IsBelow(const std::string& folder, std::string_view top) {
    return folder.starts_with(top) && folder.size() > top.size() && folder[top.size()] == '/';
}

// What an open list reads: fonts of other scripts, translations and locales, the theme for changed
// settings, these settings, and its own memory use.
std::vector<std::string> ReadableFolders() {
    std::vector<std::string> folders{"/usr", "/proc/self",
                                     std::filesystem::path(FindData("applist")).parent_path(),
                                     std::filesystem::path(PersistentSettingsPath()).parent_path()};
    for (const std::string& font : FontFolders()) {
        if (std::none_of(folders.begin(), folders.end(),
                         [&](const auto& folder) { return IsBelow(font, folder); })) {
            folders.push_back(font);
        }
    }
    return folders;
}

std::string Result(int error) {
    return error == 0 ? "restricted" : std::string("not restricted, ") + std::strerror(error);
}

void Lock(bool wayland) {
    // Without privileges the kernel accepts restrictions only from a process that cannot gain any.
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) {
        LOG_INFO("The kernel cannot restrict the program: %s", std::strerror(errno));
        return;
    }
    Folders folders{ReadableFolders(), {}};
    // The toolkit creates the buffers of its windows there.
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (wayland && runtime != nullptr) {
        folders.writable.emplace_back(runtime);
    }
    // The filter would refuse some of the calls that restrict files.
    const int files = RestrictFiles(folders);
    const int calls = RefuseCalls({HasSessionBus() || VoiceConnects(), wayland});
    LOG_INFO("Locked after the first frame; files: %s; system calls: %s", Result(files).c_str(),
             Result(calls).c_str());
}

void OnX11Frame(void*) {
    GuardCallback([] { Lock(false); });
}

void OnWaylandFrame(void*) {
    GuardCallback([] { Lock(true); });
}

// Drivers of a graphics chip compile and store programs at any time, so a list that uses one is not
// locked.
void OnDrawn(void*, Evas* canvas, void*) {
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_POST, OnDrawn);
    if (!std::exchange(g_wanted, false)) {
        return;
    }
    const std::string_view engine = ecore_evas_engine_name_get(ecore_evas_ecore_evas_get(canvas));
    if (engine != X11 && engine != WAYLAND) {
        LOG_INFO("Not locked: the toolkit draws with %s", engine.data());
        return;
    }
    // In a job, so that the display gets the frame first.
    if (ecore_job_add(engine == WAYLAND ? OnWaylandFrame : OnX11Frame, nullptr) == nullptr) {
        LOG_ERROR("Cannot lock the program: no memory for a job of the loop");
    }
}

}  // namespace

void LockAfterFirstFrame(Evas_Object* window) {
    const char* lock = std::getenv("APPLIST_LOCK");
    if (g_wanted && (lock == nullptr || std::string_view(lock) != "off")) {
        evas_event_callback_add(evas_object_evas_get(window), EVAS_CALLBACK_RENDER_POST, OnDrawn,
                                nullptr);
    }
}

}  // namespace applist::desktop
