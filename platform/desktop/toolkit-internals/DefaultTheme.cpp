// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/DefaultTheme.h"

#include <Eina.h>
#include <dlfcn.h>
#include <string_view>

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
