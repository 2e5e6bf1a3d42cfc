// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "display/NoSharedMemory.h"

#include <dlfcn.h>

#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>

namespace applist::desktop {
namespace {

bool g_without = false;

}  // namespace

void DrawWithoutSharedMemory() {
    g_without = true;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first.
extern "C" __attribute__((visibility("default"))) Bool XShmQueryExtension(Display* display) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XShmQueryExtension)>(dlsym(RTLD_NEXT, "XShmQueryExtension"));
    return !applist::desktop::g_without && replaced != nullptr ? replaced(display) : False;
}
