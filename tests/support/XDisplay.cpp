// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/XDisplay.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <poll.h>
#include <utility>

#include <X11/XKBlib.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <X11/extensions/Xrandr.h>

namespace applist::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds LOOK_AGAIN{250};

// Windows can disappear while a test examines them.
int IgnoreError(Display*, XErrorEvent*) {
    return 0;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Desktop& desktop) {
    return out << '"' << desktop.windowManager << "\" and \"" << desktop.compositor << '"';
}

XDisplay::XDisplay(const Desktop& desktop) : m_desktop(desktop) {
    StartServer();
    Connect();
    if (!desktop.windowManager.empty()) {
        StartWindowManager(desktop.windowManager);
    }
    if (!desktop.compositor.empty()) {
        StartCompositor(desktop.compositor);
    }
}

XDisplay::~XDisplay() {
    Disconnect();
}

void XDisplay::GiveUp(const std::string& what) {
    std::fprintf(stderr, "XDisplay: %s\n", what.c_str());
    std::abort();
}

void XDisplay::StartServer() {
    const std::string size =
        std::to_string(m_desktop.width) + "x" + std::to_string(m_desktop.height) + "x24";
    m_server = std::make_unique<ChildProcess>(std::vector<std::string>{
        "Xvfb", "-displayfd", "1", "-nolisten", "tcp", "-noreset", "-screen", "0", size});
    const std::string& output = m_server->Output();
    if (!m_server->WaitUntil([&output] { return output.find('\n') != std::string::npos; })) {
        GiveUp("Xvfb does not start: " + m_server->Errors());
    }
    m_name = ":" + output.substr(0, output.find('\n'));
}

// Xlib ends a process whose server has exited.
void XDisplay::Disconnect() {
    if (m_display != nullptr) {
        XCloseDisplay(std::exchange(m_display, nullptr));
    }
}

void XDisplay::Stop() {
    Disconnect();
    m_server.reset();
}

void XDisplay::Connect() {
    m_display = XOpenDisplay(m_name.c_str());
    if (m_display == nullptr) {
        GiveUp("cannot connect to " + m_name);
    }
    XSetErrorHandler(IgnoreError);
    m_root = DefaultRootWindow(m_display);
    XSelectInput(
        m_display, m_root,
        SubstructureNotifyMask | PropertyChangeMask | StructureNotifyMask | FocusChangeMask);
    XDamageCreate(m_display, m_root, XDamageReportRawRectangles);
}

// The server's monitor has one mode only, so the screen changes without it.
void XDisplay::Resize(int width, int height) {
    constexpr int MILLIMETRES = 300;
    XRRScreenResources* resources = XRRGetScreenResources(m_display, m_root);
    XRRSetCrtcConfig(m_display, resources, resources->crtcs[0], CurrentTime, 0, 0, None,
                     RR_Rotate_0, nullptr, 0);
    XRRFreeScreenResources(resources);
    XRRSetScreenSize(m_display, m_root, width, height, MILLIMETRES, MILLIMETRES);
    XSync(m_display, False);
    m_desktop.width = width;
    m_desktop.height = height;
}

ChildProcess::Environment XDisplay::Environment() const {
    return {{"DISPLAY", m_name}, {"WAYLAND_DISPLAY", std::nullopt}};
}

void XDisplay::StartWindowManager(const std::string& program) {
    m_windowManager =
        std::make_unique<ChildProcess>(std::vector<std::string>{program}, Environment());
    if (!WaitUntil([this] { return HasProperty(m_root, "_NET_CLIENT_LIST"); }) ||
        !WindowManagerReplies()) {
        GiveUp(program + " does not start: " + m_windowManager->Errors());
    }
}

void XDisplay::StartCompositor(const std::string& program) {
    // Without a reader its messages would fill the pipe and block it, and the screen with it.
    m_compositor = std::make_unique<ChildProcess>(
        std::vector<std::string>{"sh", "-c", "exec \"$0\" 2>/dev/null", program}, Environment());
    // The owner of this selection is the compositor, which also draws the screen.
    if (!WaitUntil([this] { return HasSelectionOwner("_NET_WM_CM_S0"); })) {
        GiveUp(program + " does not start");
    }
}

void XDisplay::SendKey(unsigned int code, bool down) {
    XTestFakeKeyEvent(m_display, code, down ? True : False, CurrentTime);
    XSync(m_display, False);
}

void XDisplay::PressKey(const std::string& name) {
    SendKey(XKeysymToKeycode(m_display, XStringToKeysym(name.c_str())), true);
}

void XDisplay::ReleaseKey(const std::string& name) {
    SendKey(XKeysymToKeycode(m_display, XStringToKeysym(name.c_str())), false);
}

void XDisplay::TypeKey(const std::string& name) {
    PressKey(name);
    ReleaseKey(name);
}

void XDisplay::TypeKeyWithSymbol(unsigned long symbol, unsigned int code) {
    KeySym symbols[] = {symbol};
    XChangeKeyboardMapping(m_display, static_cast<int>(code), 1, symbols, 1);
    SendKey(code, true);
    SendKey(code, false);
}

void XDisplay::MovePointer(int x, int y) {
    XTestFakeMotionEvent(m_display, DefaultScreen(m_display), x, y, CurrentTime);
    XSync(m_display, False);
}

void XDisplay::Click(int x, int y) {
    MovePointer(x, y);
    XTestFakeButtonEvent(m_display, 1, True, CurrentTime);
    XTestFakeButtonEvent(m_display, 1, False, CurrentTime);
    XSync(m_display, False);
}

bool XDisplay::WaitUntil(const std::function<bool()>& condition,
                         std::chrono::milliseconds patience) {
    const auto deadline = Clock::now() + patience;
    for (;;) {
        DrainEvents();
        if (condition()) {
            return true;
        }
        // The condition's requests may have read events.
        if (XPending(m_display) > 0) {
            continue;
        }
        const auto now = Clock::now();
        pollfd connection{ConnectionNumber(m_display), POLLIN, 0};
        if (now >= deadline) {
            return false;
        }
        // A compositor may draw without an event on this connection, so check again at intervals.
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - now);
        poll(&connection, 1, static_cast<int>(std::min(left, LOOK_AGAIN).count()));
    }
}

void XDisplay::DrainEvents() {
    while (XPending(m_display) > 0) {
        XEvent event;
        XNextEvent(m_display, &event);
        if (event.type == KeyPress || event.type == KeyRelease) {
            const char* name = XKeysymToString(XLookupKeysym(&event.xkey, 0));
            m_receivedKeys.push_back((event.type == KeyPress ? "press " : "release ") +
                                     std::string(name != nullptr ? name : "unknown"));
        }
    }
}

}  // namespace applist::test
