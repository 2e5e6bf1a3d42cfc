// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/KeyFilter.h"

#include <Ecore.h>
#include <dlfcn.h>

namespace applist::desktop {
namespace {

using AddFilter = decltype(&ecore_event_filter_add);

bool g_keep = false;

// The most recently added filter. The toolkit adds only one, that of its accessibility bridge.
Ecore_Filter_Cb g_filter = nullptr;

Eina_Bool SeeAndPassOn(void* data, void* loopData, int type, void* event) {
    g_filter(data, loopData, type, event);
    return EINA_TRUE;
}

AddFilter Original() {
    return reinterpret_cast<AddFilter>(dlsym(RTLD_NEXT, "ecore_event_filter_add"));
}

}  // namespace

void KeepFilteredEvents() {
    g_keep = true;
    g_filter = nullptr;
}

bool FilterWasAdded() {
    return g_filter != nullptr;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first.
extern "C" Ecore_Event_Filter* ecore_event_filter_add(Ecore_Data_Cb start, Ecore_Filter_Cb filter,
                                                      Ecore_End_Cb end, const void* data) {
    using namespace applist::desktop;
    if (g_keep) {
        g_filter = filter;
        filter = SeeAndPassOn;
    }
    return Original()(start, filter, end, data);
}
