// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/XDisplay.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <poll.h>
#include <utility>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <X11/extensions/Xrandr.h>

namespace applist::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds LOOK_AGAIN{250};
constexpr uint32_t GREY = 0x808080;

// Windows can disappear while a test examines them.
int IgnoreError(Display*, XErrorEvent*) {
    return 0;
}

constexpr uint32_t COLOUR_MASK = 0xFFFFFF;

struct FreeImage {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

std::unique_ptr<XImage, FreeImage> GrabImage(Display* display, Window window, int x, int y,
                                             unsigned int width, unsigned int height) {
    return std::unique_ptr<XImage, FreeImage>(
        XGetImage(display, window, x, y, width, height, AllPlanes, ZPixmap));
}

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
    static_cast<void>(std::fprintf(stderr, "XDisplay: %s\n", what.c_str()));
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
    // The owner of this selection is the compositor. It draws the screen some time later; from then
    // on a covered window keeps its own pixels.
    const XlibWindow covered = AddWindow(GREY, false);
    XMapRaised(m_display, covered);
    Cover();
    if (!WaitUntil(
            [&] { return HasSelectionOwner("_NET_WM_CM_S0") && PixelOf(covered, 5, 5) == GREY; })) {
        GiveUp(program + " does not start");
    }
    Uncover();
    Close(covered);
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

// ---- Pixels

bool XDisplay::PaintGradient() {
    ChildProcess painter({"hsetroot", "-add", "#1b3a6b", "-add", "#f2a65a", "-gradient", "30"},
                         Environment());
    if (painter.WaitForExit() != 0) {
        return false;
    }
    // Some compositors read the background again only after something else has changed.
    Cover();
    const bool covered = WaitUntil([this] { return Pixel(5, 5) == COLOUR_MASK; });
    Uncover();
    if (!covered) {
        return false;
    }
    const Box all = Area();
    return WaitUntil([&] {
        return Pixel(all.CentreX(), all.height / 10) != Pixel(all.CentreX(), all.height * 9 / 10) &&
               Pixel(5, 5) != COLOUR_MASK;
    });
}

void XDisplay::PaintRoot(uint32_t colour) {
    XSetWindowBackground(m_display, m_root, colour);
    XClearWindow(m_display, m_root);
    XSync(m_display, False);
}

uint32_t XDisplay::Pixel(int x, int y) const {
    return PixelOf(m_root, x, y);
}

uint32_t XDisplay::PixelOf(XlibWindow window, int x, int y) const {
    const auto image = GrabImage(m_display, window, x, y, 1, 1);
    return image ? static_cast<uint32_t>(XGetPixel(image.get(), 0, 0)) & COLOUR_MASK : 0;
}

Picture XDisplay::Grab() const {
    Picture picture{m_desktop.width, m_desktop.height, {}};
    const auto image = GrabImage(m_display, m_root, 0, 0, static_cast<unsigned int>(picture.width),
                                 static_cast<unsigned int>(picture.height));
    if (!image || image->bits_per_pixel != 32) {
        GiveUp("no picture of the screen");
    }
    const auto* first = reinterpret_cast<const uint32_t*>(image->data);
    picture.pixels.assign(first, first + ptrdiff_t{picture.width} * picture.height);
    for (uint32_t& pixel : picture.pixels) {
        pixel &= COLOUR_MASK;
    }
    return picture;
}

bool XDisplay::Shows(uint32_t colour) const {
    const Picture picture = Grab();
    return std::find(picture.pixels.begin(), picture.pixels.end(), colour) != picture.pixels.end();
}

bool XDisplay::WaitForColour(uint32_t colour) {
    return WaitUntil([&] { return Shows(colour); });
}

// ---- Windows

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
    const XlibWindow window = AddWindow(COLOUR_MASK, true);
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

bool XDisplay::HasKeyboard(const std::string& title) const {
    const XlibWindow window = WindowTitled(title);
    return window != 0 && FocusedWindow() == window;
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
    m_cover = AddWindow(COLOUR_MASK, false);
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
    // A compositor may paint the window in parts.
    const bool shown = WaitUntil([&] {
        return FocusedWindow() == window && Pixel(5, 5) == colour &&
               Pixel(Area().Right() - 5, Area().Bottom() - 5) == colour;
    });
    return shown ? window : 0;
}

void XDisplay::Close(XlibWindow window) {
    XDestroyWindow(m_display, window);
    XSync(m_display, False);
}

}  // namespace applist::test
