// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "bench/ScreenWatch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <poll.h>

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <X11/extensions/Xdamage.h>
#include <sys/ipc.h>
#include <sys/shm.h>

namespace applist::bench {
namespace {

constexpr int EDGE = 48;        // of 255; a letter's border is far above, a gradient below
constexpr int COLUMN_STEP = 4;  // narrower than any letter at television size
constexpr uint32_t COLOUR = 0xFFFFFF;

int Green(uint32_t colour) {
    return static_cast<int>((colour >> 8U) & 0xFFU);
}

[[noreturn]] void GiveUp(const char* what) {
    std::fprintf(stderr, "ScreenWatch: %s\n", what);
    std::exit(1);
}

}  // namespace

int CountEdges(const Strip& strip) {
    int edges = 0;
    for (size_t i = STRIP_WIDTH; i < strip.size(); ++i) {
        edges += std::abs(Green(strip[i]) - Green(strip[i - STRIP_WIDTH])) > EDGE ? 1 : 0;
    }
    return edges;
}

struct ScreenWatch::Connection {
    Display* display = nullptr;
    Window root = 0;
    int height = 0;
    int width = 0;
    int damageEvent = 0;
    XShmSegmentInfo segment{};
    XImage* strip = nullptr;
};

ScreenWatch::ScreenWatch(const std::string& name) : m_connection(std::make_unique<Connection>()) {
    Connection& c = *m_connection;
    c.display = XOpenDisplay(name.c_str());
    int error = 0;
    if (c.display == nullptr || XDamageQueryExtension(c.display, &c.damageEvent, &error) == 0 ||
        XShmQueryExtension(c.display) == 0) {
        GiveUp("no display that can be watched");
    }
    c.root = DefaultRootWindow(c.display);
    const int screen = DefaultScreen(c.display);
    c.height = DisplayHeight(c.display, screen);
    c.width = DisplayWidth(c.display, screen);
    c.strip = XShmCreateImage(c.display, DefaultVisual(c.display, screen), 24, ZPixmap, nullptr,
                              &c.segment, STRIP_WIDTH, static_cast<unsigned>(c.height));
    c.segment.shmid = shmget(
        IPC_PRIVATE, static_cast<size_t>(c.strip->bytes_per_line) * static_cast<size_t>(c.height),
        IPC_CREAT | 0600);
    c.segment.shmaddr = static_cast<char*>(shmat(c.segment.shmid, nullptr, 0));
    c.strip->data = c.segment.shmaddr;
    XShmAttach(c.display, &c.segment);
    XSync(c.display, False);
    shmctl(c.segment.shmid, IPC_RMID, nullptr);  // gone with the last who uses it
    XDamageCreate(c.display, c.root, XDamageReportRawRectangles);
    XSelectInput(c.display, c.root, SubstructureNotifyMask);
    XSync(c.display, False);
}

ScreenWatch::~ScreenWatch() {
    Connection& c = *m_connection;
    XShmDetach(c.display, &c.segment);
    XDestroyImage(c.strip);
    shmdt(c.segment.shmaddr);
    XCloseDisplay(c.display);
}

Strip ScreenWatch::Grab(int x) {
    Connection& c = *m_connection;
    XShmGetImage(c.display, c.root, c.strip, x, 0, AllPlanes);
    const auto* pixels = reinterpret_cast<const uint32_t*>(c.strip->data);
    Strip strip(pixels, pixels + static_cast<size_t>(c.height) * STRIP_WIDTH);
    for (uint32_t& pixel : strip) {
        pixel &= COLOUR;
    }
    return strip;
}

int ScreenWatch::BusiestStrip() {
    int busiest = 0;
    int most = -1;
    for (int x = 0; x + STRIP_WIDTH <= m_connection->width; x += STRIP_WIDTH) {
        const int edges = CountEdges(Grab(x));
        if (edges > most) {
            most = edges;
            busiest = x;
        }
    }
    return busiest;
}

std::optional<Clock::time_point> ScreenWatch::AwaitEvent(
    Clock::time_point until, const std::function<bool(int type)>& wanted) {
    Connection& c = *m_connection;
    for (;;) {
        while (XPending(c.display) > 0) {
            XEvent event;
            XNextEvent(c.display, &event);
            if (wanted(event.type)) {
                return Clock::now();
            }
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now());
        pollfd connection{ConnectionNumber(c.display), POLLIN, 0};
        if (left.count() <= 0 || poll(&connection, 1, static_cast<int>(left.count())) == 0) {
            return std::nullopt;
        }
    }
}

std::optional<Clock::time_point> ScreenWatch::AwaitDamage(Clock::time_point until) {
    return AwaitEvent(until, [damage = m_connection->damageEvent + XDamageNotify](int type) {
        return type == damage;
    });
}

void ScreenWatch::AwaitQuiet(std::chrono::milliseconds quiet) {
    while (AwaitDamage(Clock::now() + quiet)) {
    }
}

std::optional<Clock::time_point> ScreenWatch::AwaitStrip(
    int x, const std::function<bool(const Strip&)>& wanted, std::chrono::milliseconds patience) {
    const auto until = Clock::now() + patience;
    while (const auto drawn = AwaitDamage(until)) {
        if (wanted(Grab(x))) {
            return drawn;
        }
    }
    return std::nullopt;
}

std::optional<Clock::time_point> ScreenWatch::AwaitUnmap(std::chrono::milliseconds patience) {
    return AwaitEvent(Clock::now() + patience,
                      [](int type) { return type == UnmapNotify || type == DestroyNotify; });
}

void ScreenWatch::Forget() {
    XSync(m_connection->display, True);
}

}  // namespace applist::bench
