// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Preloaded into an application. At the end of each step of its start, appends one line to the file
// START_STEPS: the step's name and, since the start of the process, its milliseconds, its
// milliseconds of processor time, its page faults with and without a read from disk, its blocking
// round trips to the X server, and its loaded libraries.
#include <atomic>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <string_view>
#include <unistd.h>

#include <sys/resource.h>
#include <sys/uio.h>

namespace {

std::atomic<int> g_roundTrips = 0;
std::atomic<bool> g_requestsSent = false;
bool g_rowsArrived = false;
bool g_drawn = false;

template <typename Function>
Function* Next(const char* name) {
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

double Milliseconds(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// The 22nd field is the time of the start in clock ticks since the boot.
double StartOfProcess() {
    std::FILE* file = std::fopen("/proc/self/stat", "re");
    unsigned long long ticks = 0;
    if (file == nullptr ||
        std::fscanf(file,
                    "%*d (%*[^)]) %*c %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s %*s "
                    "%*s %*s %*s %*s %llu",
                    &ticks) != 1) {
        std::abort();
    }
    std::fclose(file);
    return static_cast<double>(ticks) * 1e3 / static_cast<double>(sysconf(_SC_CLK_TCK));
}

int CountOne(dl_phdr_info* library, size_t, void* count) {
    // Counts shared libraries that have a file. The program's name is empty, and the kernel's part
    // does not have a file. This library is not part of the application's start.
    const std::string_view name(library->dlpi_name);
    const bool counts =
        name.find('/') != std::string_view::npos && !name.ends_with("start_steps.so");
    *static_cast<int*>(count) += counts ? 1 : 0;
    return 0;
}

void End(const char* step) {
    static const double start = StartOfProcess();
    rusage use{};
    getrusage(RUSAGE_SELF, &use);
    int libraries = 0;
    dl_iterate_phdr(CountOne, &libraries);
    char line[256];
    const int length =
        std::snprintf(line, sizeof line, "%s\t%.1f\t%.3f\t%ld\t%ld\t%d\t%d\n", step,
                      Milliseconds(CLOCK_BOOTTIME) - start, Milliseconds(CLOCK_PROCESS_CPUTIME_ID),
                      use.ru_majflt, use.ru_minflt, g_roundTrips.load(), libraries);
    const int file = open(std::getenv("START_STEPS"), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC,
                          S_IRUSR | S_IWUSR);
    if (file < 0 || write(file, line, static_cast<size_t>(length)) != length) {
        std::abort();
    }
    close(file);
}

__attribute__((constructor)) void Loaded() {
    End("load the libraries");
}

}  // namespace

// The functions below replace the libraries' functions of the same names.
extern "C" {

ssize_t writev(int file, const iovec* parts, int count) {
    static auto* const next = Next<decltype(writev)>("writev");
    g_requestsSent = true;
    return next(file, parts, count);
}

// Both functions send pending requests before they wait. Replies to requests that were sent
// together share one round trip.
void* xcb_wait_for_reply(void* connection, unsigned int request, void** error) {
    static auto* const next = Next<decltype(xcb_wait_for_reply)>("xcb_wait_for_reply");
    void* const reply = next(connection, request, error);
    g_roundTrips += g_requestsSent.exchange(false) ? 1 : 0;
    return reply;
}

void* xcb_wait_for_reply64(void* connection, uint64_t request, void** error) {
    static auto* const next = Next<decltype(xcb_wait_for_reply64)>("xcb_wait_for_reply64");
    void* const reply = next(connection, request, error);
    g_roundTrips += g_requestsSent.exchange(false) ? 1 : 0;
    return reply;
}

// The greeting of a connection.
void* xcb_connect_to_display_with_auth_info(const char* name, void* authorisation, int* screen) {
    static auto* const next = Next<decltype(xcb_connect_to_display_with_auth_info)>(
        "xcb_connect_to_display_with_auth_info");
    ++g_roundTrips;
    return next(name, authorisation, screen);
}

int g_application_register(void* application, void* cancellable, void** error) {
    static auto* const next = Next<decltype(g_application_register)>("g_application_register");
    const int result = next(application, cancellable, error);
    End("look for another instance");
    return result;
}

int elm_init(int argc, char** argv) {
    static auto* const next = Next<decltype(elm_init)>("elm_init");
    const int result = next(argc, argv);
    End("start the toolkit");
    return result;
}

int ecore_x_init(const char* display) {
    static auto* const next = Next<decltype(ecore_x_init)>("ecore_x_init");
    const int result = next(display);
    if (result == 1) {
        End("connect to the display");
    }
    return result;
}

void* g_bus_get_sync(int type, void* cancellable, void** error) {
    static auto* const next = Next<decltype(g_bus_get_sync)>("g_bus_get_sync");
    void* const bus = next(type, cancellable, error);
    constexpr int SYSTEM_BUS = 1;
    if (type == SYSTEM_BUS) {
        End("connect to the system bus");
    }
    return bus;
}

void* elm_win_add(void* parent, const char* name, int type) {
    static auto* const next = Next<decltype(elm_win_add)>("elm_win_add");
    void* const window = next(parent, name, type);
    End("create the window");
    return window;
}

void elm_run() {
    static auto* const next = Next<decltype(elm_run)>("elm_run");
    End("create the popup and the list");
    next();
}

void* elm_genlist_item_append(void* list, const void* itemClass, const void* data, void* parent,
                              int type, void* callback, const void* callbackData) {
    static auto* const next = Next<decltype(elm_genlist_item_append)>("elm_genlist_item_append");
    if (!g_rowsArrived) {
        g_rowsArrived = true;
        End("wait for the rows");
    }
    return next(list, itemClass, data, parent, type, callback, callbackData);
}

// If the middleware is slow, the program draws an empty panel first. That frame is left out, so
// that the counts do not depend on the machine's load.
void* evas_render_updates(void* canvas) {
    static auto* const next = Next<decltype(evas_render_updates)>("evas_render_updates");
    if (!g_rowsArrived || g_drawn) {
        return g_rowsArrived ? next(canvas) : nullptr;
    }
    End("lay out the rows");
    void* const updates = next(canvas);
    g_drawn = true;
    End("draw the first frame");
    return updates;
}
}
