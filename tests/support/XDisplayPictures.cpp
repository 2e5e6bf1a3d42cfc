// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Reads the pixels of the screen.
#include <algorithm>
#include <memory>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include "support/XDisplay.h"

namespace applist::test {
namespace {

constexpr uint32_t COLOUR_MASK = 0xFFFFFF;

struct FreeImage {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

std::unique_ptr<XImage, FreeImage> GrabImage(Display* display, Window window, int x, int y,
                                             unsigned int width, unsigned int height) {
    return std::unique_ptr<XImage, FreeImage>(
        XGetImage(display, window, x, y, width, height, AllPlanes, ZPixmap));
}

}  // namespace

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
    const auto image = GrabImage(m_display, m_root, x, y, 1, 1);
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

bool XDisplay::SaveScreenshot(const std::string& path) const {
    ChildProcess import({"import", "-window", "root", path}, Environment());
    return import.WaitForExit() == 0;
}

}  // namespace applist::test
