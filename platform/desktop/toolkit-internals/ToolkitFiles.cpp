// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/ToolkitFiles.h"

#include <Eina.h>
#include <dlfcn.h>
#include <string_view>

#include <fontconfig/fontconfig.h>

#include "CallbackGuard.h"

namespace applist::desktop {
namespace {

// The end of the paths that the toolkit tries for its default theme: in the user's home and in its
// own folder. It compares the versions of both files.
constexpr std::string_view DEFAULT_THEME = "/themes/default.edj";

// Opened instead of the default theme; empty before ReplaceDefaultTheme(). Not destroyed, because
// the toolkit's threads may open files while the program ends.
std::string& Replacement() {
    static auto* const path = new std::string;
    return *path;
}

}  // namespace

void ReplaceDefaultTheme(const std::string& theme) {
    Replacement() = theme;
}

}  // namespace applist::desktop

// Replaces the library's function, because the dynamic linker resolves symbols from the program
// first. The environment variable for the toolkit's folders is not used instead, because it would
// also move the toolkit's configuration.
extern "C" __attribute__((visibility("default"))) Eina_File* eina_file_open(const char* name,
                                                                            Eina_Bool shared) {
    static auto* const replaced =
        reinterpret_cast<decltype(&eina_file_open)>(dlsym(RTLD_NEXT, "eina_file_open"));
    const std::string& theme = applist::desktop::Replacement();
    const bool isDefault =
        !theme.empty() && std::string_view(name).ends_with(applist::desktop::DEFAULT_THEME);
    return replaced(isDefault ? theme.c_str() : name, shared);
}

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
