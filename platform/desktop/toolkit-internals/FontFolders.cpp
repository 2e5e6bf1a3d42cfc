// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/FontFolders.h"

#include <dlfcn.h>

#include <fontconfig/fontconfig.h>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

// Not destroyed, because the toolkit may look for fonts while the program ends.
std::vector<std::string>& Found() {
    static auto* const folders = new std::vector<std::string>;
    return *folders;
}

void Remember(FcConfig* configuration) {
    FcStrList* const folders = FcConfigGetFontDirs(configuration);
    while (const FcChar8* folder = folders != nullptr ? FcStrListNext(folders) : nullptr) {
        Found().emplace_back(reinterpret_cast<const char*>(folder));
    }
    if (folders != nullptr) {
        FcStrListDone(folders);
    }
}

}  // namespace

const std::vector<std::string>& FontFolders() {
    return Found();
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first. The toolkit keeps its configuration to itself, and loading another one would read 150
// files.
extern "C" __attribute__((visibility("default"))) FcConfig* FcInitLoadConfigAndFonts() {
    static auto* const replaced = reinterpret_cast<decltype(&FcInitLoadConfigAndFonts)>(
        dlsym(RTLD_NEXT, "FcInitLoadConfigAndFonts"));
    FcConfig* const configuration = replaced();
    if (configuration != nullptr) {
        applist::GuardCallback([&] { applist::desktop::Remember(configuration); });
    }
    return configuration;
}
