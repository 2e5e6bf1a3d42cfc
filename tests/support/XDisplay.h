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

// Xlib's own header would fill every test with its macros.
using XlibDisplay = struct _XDisplay;
using XlibWindow = unsigned long;

namespace applist::test {

/// What runs on a display besides the program under test.
struct Desktop {
    /// Started in PATH; none where empty. "openbox".
    std::string windowManager;
    /// "picom" or "xcompmgr".
    std::string compositor;
    /// Of the screen, in pixels.
    int width = 1920;
    int height = 1080;
};
std::ostream& operator<<(std::ostream& out, const Desktop& desktop);

/// A screen that nobody else uses: an Xvfb of its own on a free number, ready
/// when the constructor returns. A display that cannot be started aborts the test program.
class XDisplay {
public:
    explicit XDisplay(const Desktop& desktop = {});
    ~XDisplay();
    XDisplay(const XDisplay&) = delete;
    XDisplay& operator=(const XDisplay&) = delete;
    XDisplay(XDisplay&&) = delete;
    XDisplay& operator=(XDisplay&&) = delete;

    /// For DISPLAY, ":7".
    const std::string& Name() const { return m_name; }
    /// The environment of a program that is to run here.
    ChildProcess::Environment Environment() const;

    /// A key by its X name ("Down", "Escape", "Return") goes to the focused window.
    void PressKey(const std::string& name);
    void ReleaseKey(const std::string& name);
    void TypeKey(const std::string& name);
    /// The same for a symbol that has no X name, put on the key with this code first.
    void TypeKeyWithSymbol(unsigned long symbol, unsigned int code);

    /// The pointer goes there, as an air mouse does, and clicks with its first button.
    void MovePointer(int x, int y);
    void Click(int x, int y);

    /// Waits until the condition, asked again after anything happens on the screen, holds; true iff
    /// it does in time.
    bool WaitUntil(const std::function<bool()>& condition,
                   std::chrono::milliseconds patience = PATIENCE);

    /// The mapped window with this title, or 0.
    XlibWindow WindowTitled(const std::string& title) const;
    /// The window that gets the keys.
    XlibWindow FocusedWindow() const;
    /// Puts the window away; false where that takes too long. One that is shown again before it is
    /// away stays away for good.
    bool Iconify(XlibWindow window);
    void Map(XlibWindow window);
    /// Asks the program to close it, as a window manager does.
    void RequestClose(XlibWindow window);
    /// Covers the whole screen with an opaque window, until Uncover().
    void Cover();
    void Uncover();

    /// Kills the server, which closes every connection. Nothing else may be asked afterwards.
    void Stop();

    /// Opens a full-screen window of one colour 0xRRGGBB, as a video player does, and waits until
    /// the window manager has given it the keys and it is seen; 0 if it is not.
    XlibWindow OpenFullScreen(uint32_t colour);
    /// The keys that such windows have received so far: "press Return", "release Return".
    const std::vector<std::string>& ReceivedKeys() const { return m_receivedKeys; }
    void Close(XlibWindow window);

    /// Puts a picture of many colours into the background, and waits until it is seen.
    bool PaintGradient();
    /// Fills the background, which stands for the broadcast, with one colour 0xRRGGBB.
    void PaintRoot(uint32_t colour);
    /// The screen's whole area.
    Box Area() const { return {0, 0, m_desktop.width, m_desktop.height}; }
    /// The colour of one pixel of the screen as 0xRRGGBB.
    uint32_t Pixel(int x, int y) const;
    Picture Grab() const;
    /// True iff some pixel of the screen has this colour.
    bool Shows(uint32_t colour) const;
    /// Saves the screen as a PNG file; true iff it could.
    bool SaveScreenshot(const std::string& path) const;

private:
    [[noreturn]] static void GiveUp(const std::string& what);
    void StartServer();
    void Connect();
    void Disconnect();
    void StartWindowManager(const std::string& program);
    void StartCompositor(const std::string& program);
    void SendKey(unsigned int code, bool down);
    bool HasProperty(const char* name) const;
    bool HasSelectionOwner(const char* name) const;
    /// Takes all that has happened off the connection.
    void DrainEvents();
    /// A window as large as the screen, not yet shown; a window manager leaves it alone unless
    /// managed.
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
