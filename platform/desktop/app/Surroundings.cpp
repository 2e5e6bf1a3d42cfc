// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/Surroundings.h"

#include <Ecore_X.h>
#include <algorithm>
#include <filesystem>
#include <glib.h>
#include <iterator>
#include <string_view>
#include <system_error>
#include <unistd.h>

#include "display/ScreenFit.h"
#include "display/Theme.h"

namespace applist::desktop {
namespace {

// The starts of the variables that the toolkit, fontconfig, Xlib, GLib and the loader read before
// the application does, and of those with which this port finds the viewer's settings.
constexpr std::string_view READ_AT_START[] = {"APPLIST_PLATFORM_ROOT=",
                                              "DISPLAY=",
                                              "ECORE_",
                                              "EDJE_",
                                              "EET_",
                                              "EFL_",
                                              "EFREET_",
                                              "EINA_",
                                              "EIO_",
                                              "ELM_",
                                              "EO_",
                                              "EVAS_",
                                              "FC_",
                                              "FONTCONFIG_",
                                              "FREETYPE_",
                                              "GLIBC_TUNABLES=",
                                              "GOBJECT_",
                                              "G_",
                                              "HB_",
                                              "HOME=",
                                              "LANG=",
                                              "LANGUAGE=",
                                              "LC_",
                                              "LD_",
                                              "MALLOC_",
                                              "TMPDIR=",
                                              "WAYLAND_",
                                              "XAUTHORITY=",
                                              "XCURSOR_",
                                              "XDG_CACHE_HOME=",
                                              "XDG_CONFIG",
                                              "XDG_DATA_",
                                              "XDG_RUNTIME_DIR=",
                                              "XKB",
                                              "XKEYSYMDB=",
                                              "XLOCALEDIR="};

bool IsReadAtStart(std::string_view variable) {
    return std::any_of(std::begin(READ_AT_START), std::end(READ_AT_START),
                       [variable](std::string_view start) { return variable.starts_with(start); });
}

std::string ScreenSizes() {
    // Asks the X server; the toolkit may not know the new size of the screen yet.
    int width = 0;
    int height = 0;
    ecore_x_window_size_get(ecore_x_window_root_first_get(), &width, &height);
    const Eina_Rectangle monitor = FirstMonitor();
    return std::to_string(width) + 'x' + std::to_string(height) + ' ' + std::to_string(monitor.w) +
           'x' + std::to_string(monitor.h);
}

}  // namespace

std::vector<std::string> ReadSurroundings() {
    std::error_code ignored;
    const std::string theme = FindTheme();
    const auto changed = std::filesystem::last_write_time(theme, ignored).time_since_epoch();
    // The kernel adds "(deleted)" to the name of a program that has been replaced.
    const std::string program = std::filesystem::read_symlink("/proc/self/exe", ignored);
    std::vector<std::string> lines{"program " + program,
                                   "theme " + theme + ' ' + std::to_string(changed.count()),
                                   "screen " + ScreenSizes()};
    std::copy_if(environ, environ + g_strv_length(environ), std::back_inserter(lines),
                 IsReadAtStart);
    std::sort(lines.begin(), lines.end());
    return lines;
}

}  // namespace applist::desktop
