// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "support/ChildProcess.h"

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
    std::string size = "1920x1080";
};
std::ostream& operator<<(std::ostream& out, const Desktop& desktop);

/// The pixels of a screen, row by row from the top, as 0xRRGGBB.
struct Picture {
    int width = 0;
    std::vector<uint32_t> pixels;

    uint32_t At(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
    bool operator==(const Picture&) const = default;
};

/// A piece of a screen, its edges included; an empty one has its right edge left of the left one.
struct Rectangle {
    int left = 0;
    int top = 0;
    int right = -1;
    int bottom = -1;

    bool Empty() const { return right < left; }
    int Height() const { return bottom - top + 1; }
    int CentreX() const { return (left + right) / 2; }
    int CentreY() const { return (top + bottom) / 2; }
};

/// The smallest piece that holds every pixel in which the two differ.
Rectangle Difference(const Picture& before, const Picture& after);
/// The smallest piece that holds every pixel of the colour.
Rectangle AreaOf(const Picture& picture, uint32_t colour);

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
    void Close(XlibWindow window);

    /// Puts a picture of many colours into the background, and waits until it is seen.
    bool PaintGradient();
    /// Fills the background, which stands for the broadcast, with one colour 0xRRGGBB.
    void PaintRoot(uint32_t colour);
    /// The colour of one pixel of the screen as 0xRRGGBB.
    uint32_t Pixel(int x, int y) const;
    Picture Grab() const;
    /// True iff some pixel of the screen has this colour.
    bool Shows(uint32_t colour) const;
    /// Saves the screen as a PNG file; true iff it could.
    bool SaveScreenshot(const std::string& path) const;

private:
    void Connect();
    void Disconnect();
    void StartWindowManager(const std::string& program);
    void StartCompositor(const std::string& program);
    void SendKey(unsigned int code, bool down);
    bool HasProperty(const char* name) const;
    bool HasSelectionOwner(const char* name) const;
    /// Takes all that has happened off the connection.
    void DrainEvents();
    std::vector<XlibWindow> AllWindows(XlibWindow top) const;

    std::unique_ptr<ChildProcess> m_server;
    std::string m_name;
    XlibDisplay* m_display = nullptr;
    XlibWindow m_root = 0;
    XlibWindow m_cover = 0;
    std::unique_ptr<ChildProcess> m_windowManager;
    std::unique_ptr<ChildProcess> m_compositor;
};

}  // namespace applist::test
