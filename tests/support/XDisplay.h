// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "support/ChildProcess.h"
#include "support/Picture.h"

// Forward declarations, because Xlib's header defines many macros.
using XlibDisplay = struct _XDisplay;
using XlibWindow = unsigned long;

namespace applist::test {

/// The programs on a display besides the program under test.
struct Desktop {
    /// For example "openbox", started from PATH; not started if empty.
    std::string windowManager;
    /// "picom" or "xcompmgr".
    std::string compositor;
    /// The size of the screen in pixels.
    int width = 1920;
    int height = 1080;
};
std::ostream& operator<<(std::ostream& out, const Desktop& desktop);

/// A separate Xvfb on a free display number, ready when the constructor returns. A display that
/// cannot be started aborts the test program.
class XDisplay {
public:
    explicit XDisplay(const Desktop& desktop = {});
    ~XDisplay();
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;

    /// The value of DISPLAY, such as ":7".
    const std::string& Name() const { return m_name; }
    /// The environment of a program on this display.
    ChildProcess::Environment Environment() const;

    /// Send a key by its X name ("Down", "Escape", "Return") to the focused window.
    void PressKey(const std::string& name);
    void ReleaseKey(const std::string& name);
    void TypeKey(const std::string& name);
    /// The same for a symbol without an X name, after assigning it to the key with this code.
    void TypeKeyWithSymbol(unsigned long symbol, unsigned int code);

    /// Moves the pointer, as an air mouse does; clicks with the first button.
    void MovePointer(int x, int y);
    void Click(int x, int y);

    /// Waits until the condition holds, checked after each event on the screen; true iff it does in
    /// time.
    bool WaitUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds patience = PATIENCE);

    /// Waits until a pixel of the screen has this colour; true iff one has in time.
    bool WaitForColour(uint32_t colour);
    /// True iff the window with this title has the keyboard focus.
    bool HasKeyboard(const std::string& title) const;
    /// The mapped window with this title, or 0.
    XlibWindow WindowTitled(const std::string& title) const;
    /// The window with the keyboard focus.
    XlibWindow FocusedWindow() const;
    /// Iconifies the window; false if that takes too long. Map() must be called only after this has
    /// succeeded: a window mapped earlier stays iconified.
    bool Iconify(XlibWindow window);
    void Map(XlibWindow window);
    /// Asks the program to close the window, as a window manager does.
    void RequestClose(XlibWindow window);
    /// Covers the whole screen with an opaque window, until Uncover().
    void Cover();
    void Uncover();

    /// Kills the server, which closes every connection. No other function may be called afterwards.
    void Stop();

    /// Opens a full-screen window of one colour 0xRRGGBB, like a video player's, and waits until it
    /// is visible and has the keyboard focus; 0 if that fails.
    XlibWindow OpenFullScreen(uint32_t colour);
    /// The keys that such windows have received so far: "press Return", "release Return".
    const std::vector<std::string>& ReceivedKeys() const { return m_receivedKeys; }
    void Close(XlibWindow window);

    /// Draws a picture with many colours on the background and waits until it is visible.
    bool PaintGradient();
    /// Fills the background, which represents the broadcast, with one colour 0xRRGGBB.
    void PaintRoot(uint32_t colour);
    /// Gives the screen another size, at most that of the constructor.
    void Resize(int width, int height);
    /// The screen's whole area.
    Box Area() const { return {0, 0, m_desktop.width, m_desktop.height}; }
    /// The colour of one pixel of the screen as 0xRRGGBB.
    uint32_t Pixel(int x, int y) const;
    Picture Grab() const;
    /// True iff at least one pixel of the screen has this colour.
    bool Shows(uint32_t colour) const;

private:
    [[noreturn]] static void GiveUp(const std::string& what);
    void StartServer();
    void Connect();
    void Disconnect();
    void StartWindowManager(const std::string& program);
    void StartCompositor(const std::string& program);
    void SendKey(unsigned int code, bool down);
    bool HasProperty(XlibWindow window, const char* name) const;
    /// Waits until the window manager answers a request; true iff it does in time.
    bool WindowManagerReplies();
    /// The colour of one pixel of a window as 0xRRGGBB.
    uint32_t PixelOf(XlibWindow window, int x, int y) const;
    bool HasSelectionOwner(const char* name) const;
    /// Discards all pending events of the connection.
    void DrainEvents();
    /// Creates a window as large as the screen and does not show it. The window manager ignores it
    /// unless managed.
    XlibWindow AddWindow(uint32_t colour, bool managed);
    std::vector<XlibWindow> AllWindows(XlibWindow top) const;

    Desktop m_desktop;
    std::unique_ptr<ChildProcess> m_server;
    std::string m_name;
    XlibDisplay* m_display = nullptr;
    XlibWindow m_root = 0;
    XlibWindow m_cover = 0;
    std::vector<std::string> m_receivedKeys;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::unique_ptr<ChildProcess> m_compositor;
};

}  // namespace applist::test
