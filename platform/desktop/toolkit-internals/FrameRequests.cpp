// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/FrameRequests.h"

#include <Ecore_Evas.h>
#include <cstring>
#include <dlfcn.h>
#include <memory>
#include <type_traits>
#include <utility>

#include <X11/Xutil.h>
#include <X11/extensions/shape.h>

namespace applist::desktop {
namespace {

struct DestroyRegion {
    void operator()(Region region) const { XDestroyRegion(region); }
};
using OwnedRegion = std::unique_ptr<std::remove_pointer_t<Region>, DestroyRegion>;

OwnedRegion RegionOf(XRectangle area) {
    OwnedRegion region(XCreateRegion());
    XUnionRectWithRegion(&area, region.get(), region.get());
    return region;
}

// Returns true if all pixels of the line are 1.
bool IsLineOpaque(XImage& image, int y) {
    const char* const line = image.data + static_cast<ptrdiff_t>(y) * image.bytes_per_line;
    const size_t bytes = static_cast<size_t>(image.width) / 8;
    // Each byte equals the one before it.
    if (bytes > 0 && (*line != '\xff' || std::memcmp(line, line + 1, bytes - 1) != 0)) {
        return false;
    }
    bool opaque = true;
    for (int x = image.width / 8 * 8; x < image.width; ++x) {
        opaque = opaque && XGetPixel(&image, x, y) != 0;
    }
    return opaque;
}

// Returns true if all pixels of an image with one bit per pixel are 1.
bool IsOpaque(XImage& image) {
    bool opaque = true;
    for (int y = 0; y < image.height && opaque; ++y) {
        opaque = IsLineOpaque(image, y);
    }
    return opaque;
}

// The shape of a window as the server knows it.
class Shape {
public:
    // Called before an image is drawn into the mask. Returns false if it does not change the mask.
    bool Draw(Pixmap mask, XImage& image, XRectangle area) {
        if (std::exchange(m_mask, mask) != mask) {
            m_opaque.reset(XCreateRegion());
            m_changed = true;
        }
        const bool opaque = IsOpaque(image);
        if (opaque &&
            XRectInRegion(m_opaque.get(), area.x, area.y, area.width, area.height) == RectangleIn) {
            return false;
        }
        const OwnedRegion drawn = RegionOf(area);
        (opaque ? XUnionRegion : XSubtractRegion)(m_opaque.get(), drawn.get(), m_opaque.get());
        m_changed = true;
        return true;
    }
    // Called before the window gets this shape. Returns false if it already has it.
    bool Set(Window window, Pixmap mask) {
        const bool known = mask != None && mask == m_mask;
        const bool same = std::exchange(m_window, known ? window : None) == window && known;
        return std::exchange(m_changed, false) || !same;
    }

private:
    // The server does not use the number of a deleted pixmap again while this program runs.
    Pixmap m_mask = None;
    OwnedRegion m_opaque;
    Window m_window = None;
    bool m_changed = false;
};

Shape g_shape;
bool g_sendsShapedFrame = false;

// A compositor may show a window before its first frame. The toolkit's wait makes that less likely.
void OnBeforeSending(void*, Evas* canvas, void*) {
    g_sendsShapedFrame = ecore_evas_shaped_get(ecore_evas_ecore_evas_get(canvas)) != EINA_FALSE;
}

void OnSent(void*, Evas*, void*) {
    g_sendsShapedFrame = false;
}

}  // namespace

void SendFramesAtOnce(const Evas_Object* object) {
    Evas* const canvas = evas_object_evas_get(object);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_FLUSH_PRE, OnBeforeSending, nullptr);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_FLUSH_POST, OnSent, nullptr);
}

}  // namespace applist::desktop

// The functions below replace the library's functions, because the dynamic linker resolves symbols
// from the program first.
extern "C" __attribute__((visibility("default"))) int XSync(Display* display, Bool discard) {
    static auto* const replaced = reinterpret_cast<decltype(&XSync)>(dlsym(RTLD_NEXT, "XSync"));
    return applist::desktop::g_sendsShapedFrame ? 0 : replaced(display, discard);
}

extern "C" __attribute__((visibility("default"))) int XPutImage(Display* display, Drawable target,
                                                                GC gc, XImage* image, int fromX,
                                                                int fromY, int x, int y,
                                                                unsigned int width,
                                                                unsigned int height) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XPutImage)>(dlsym(RTLD_NEXT, "XPutImage"));
    // The toolkit draws only its masks with one bit per pixel.
    const XRectangle area{static_cast<short>(x), static_cast<short>(y),
                          static_cast<unsigned short>(width), static_cast<unsigned short>(height)};
    return image->depth != 1 || applist::desktop::g_shape.Draw(target, *image, area)
               ? replaced(display, target, gc, image, fromX, fromY, x, y, width, height)
               : 0;
}

extern "C" __attribute__((visibility("default"))) void XShapeCombineMask(Display* display,
                                                                         Window window, int kind,
                                                                         int x, int y, Pixmap mask,
                                                                         int operation) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XShapeCombineMask)>(dlsym(RTLD_NEXT, "XShapeCombineMask"));
    if (kind != ShapeBounding || applist::desktop::g_shape.Set(window, mask)) {
        replaced(display, window, kind, x, y, mask, operation);
    }
}
