// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Finds, iconifies, opens and closes windows on the test's X server.
#include <algorithm>

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "support/XDisplay.h"

namespace applist::test {
namespace {

constexpr uint32_t WHITE = 0xFFFFFF;

struct FreeXlib {
    void operator()(void* data) const { XFree(data); }
};

std::string TitleOf(Display* display, Window window) {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* title = nullptr;
    XGetWindowProperty(display, window, XInternAtom(display, "_NET_WM_NAME", False), 0, 256, False,
                       AnyPropertyType, &type, &format, &count, &left, &title);
    const std::unique_ptr<unsigned char, FreeXlib> owner(title);
    return format == 8 ? std::string(reinterpret_cast<const char*>(title), count) : std::string();
}

bool IsMapped(Display* display, Window window) {
    XWindowAttributes attributes;
    return XGetWindowAttributes(display, window, &attributes) != 0 &&
           attributes.map_state == IsViewable;
}

}  // namespace

bool XDisplay::HasProperty(XlibWindow window, const char* name) const {
    Atom type = None;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* data = nullptr;
    XGetWindowProperty(m_display, window, XInternAtom(m_display, name, False), 0, 1, False,
                       AnyPropertyType, &type, &format, &count, &left, &data);
    const std::unique_ptr<unsigned char, FreeXlib> owner(data);
    return type != None;
}

// A window manager announces itself before its event loop runs. openbox sometimes leaves the events
// of that time unread until the next event arrives, so that a window would not be shown. Repeating
// the request is such an event, and the reply shows that the loop runs.
bool XDisplay::WindowManagerReplies() {
    const XlibWindow window = AddWindow(WHITE, true);
    XSelectInput(m_display, window, PropertyChangeMask);
    XEvent request{};
    request.xclient.type = ClientMessage;
    request.xclient.window = window;
    request.xclient.message_type = XInternAtom(m_display, "_NET_REQUEST_FRAME_EXTENTS", False);
    request.xclient.format = 32;
    const bool replies = WaitUntil([&] {
        XSendEvent(m_display, m_root, False, SubstructureRedirectMask, &request);
        return HasProperty(window, "_NET_FRAME_EXTENTS");
    });
    XDestroyWindow(m_display, window);
    return replies;
}

bool XDisplay::HasSelectionOwner(const char* name) const {
    return XGetSelectionOwner(m_display, XInternAtom(m_display, name, False)) != None;
}

std::vector<XlibWindow> XDisplay::AllWindows(XlibWindow top) const {
    Window root = 0;
    Window parent = 0;
    Window* children = nullptr;
    unsigned int count = 0;
    std::vector<XlibWindow> windows{top};
    if (XQueryTree(m_display, top, &root, &parent, &children, &count) == 0) {
        return windows;
    }
    const std::unique_ptr<Window, FreeXlib> owner(children);
    for (unsigned int i = 0; i < count; ++i) {
        const auto below = AllWindows(children[i]);
        windows.insert(windows.end(), below.begin(), below.end());
    }
    return windows;
}

XlibWindow XDisplay::WindowTitled(const std::string& title) const {
    const auto windows = AllWindows(m_root);
    const auto found = std::find_if(windows.begin(), windows.end(), [&](XlibWindow window) {
        return TitleOf(m_display, window) == title && IsMapped(m_display, window);
    });
    return found != windows.end() ? *found : 0;
}

XlibWindow XDisplay::FocusedWindow() const {
    Window focused = 0;
    int revert = 0;
    XGetInputFocus(m_display, &focused, &revert);
    return focused;
}

bool XDisplay::Iconify(XlibWindow window) {
    XIconifyWindow(m_display, window, DefaultScreen(m_display));
    return WaitUntil([&] {
        XWindowAttributes attributes{};
        return XGetWindowAttributes(m_display, window, &attributes) != 0 &&
               attributes.map_state == IsUnmapped;
    });
}

void XDisplay::Map(XlibWindow window) {
    XMapWindow(m_display, window);
    XSync(m_display, False);
}

void XDisplay::RequestClose(XlibWindow window) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(m_display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(m_display, "WM_DELETE_WINDOW", False));
    XSendEvent(m_display, window, False, NoEventMask, &event);
    XSync(m_display, False);
}

XlibWindow XDisplay::AddWindow(uint32_t colour, bool managed) {
    XSetWindowAttributes attributes{};
    attributes.override_redirect = managed ? False : True;
    attributes.background_pixel = colour;
    return XCreateWindow(m_display, m_root, 0, 0, static_cast<unsigned int>(m_desktop.width),
                         static_cast<unsigned int>(m_desktop.height), 0, CopyFromParent,
                         InputOutput, nullptr, CWOverrideRedirect | CWBackPixel, &attributes);
}

void XDisplay::Cover() {
    m_cover = AddWindow(WHITE, false);
    XMapRaised(m_display, m_cover);
    XSync(m_display, False);
}

void XDisplay::Uncover() {
    XDestroyWindow(m_display, m_cover);
    XSync(m_display, False);
}

XlibWindow XDisplay::OpenFullScreen(uint32_t colour) {
    const XlibWindow window = AddWindow(colour, true);
    Atom state = XInternAtom(m_display, "_NET_WM_STATE_FULLSCREEN", False);
    XChangeProperty(m_display, window, XInternAtom(m_display, "_NET_WM_STATE", False), XA_ATOM, 32,
                    PropModeReplace, reinterpret_cast<unsigned char*>(&state), 1);
    XSelectInput(m_display, window, KeyPressMask | KeyReleaseMask);
    XMapRaised(m_display, window);
    return WaitUntil([&] { return FocusedWindow() == window && Pixel(5, 5) == colour; }) ? window
                                                                                         : 0;
}

void XDisplay::Close(XlibWindow window) {
    XDestroyWindow(m_display, window);
    XSync(m_display, False);
}

}  // namespace applist::test
