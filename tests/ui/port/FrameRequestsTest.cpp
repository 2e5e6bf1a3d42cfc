// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Ecore.h>
#include <Ecore_Evas.h>
#include <cstdlib>
#include <memory>
#include <optional>

#include <gmock/gmock.h>

#include "support/XDisplay.h"
#include "toolkit-internals/FrameRequests.h"

// Last, because they define macros with common names.
#include <X11/Xutil.h>
#include <X11/extensions/shape.h>

namespace applist::test {
namespace {

// The width is not a multiple of a byte.
constexpr Box PANEL{8, 8, 20, 16};
constexpr Box ROW{12, 10, 9, 2};

struct Close {
    void operator()(Display* display) const { XCloseDisplay(display); }
};

/// A client that shapes windows by masks, as the toolkit does.
class TheShapeOfAWindow : public testing::Test {
protected:
    TheShapeOfAWindow() : m_one(AddWindow()), m_other(AddWindow()), m_mask(AddMask()) {}
    ~TheShapeOfAWindow() override { XFreeGC(client.get(), m_pen); }

    Window AddWindow() {
        return XCreateSimpleWindow(client.get(), DefaultRootWindow(client.get()), 0, 0, 64, 64, 0,
                                   0, 0);
    }
    /// A mask without opaque pixels.
    Pixmap AddMask() {
        const Pixmap mask = XCreatePixmap(client.get(), DefaultRootWindow(client.get()), 64, 64, 1);
        if (m_pen == nullptr) {
            m_pen = XCreateGC(client.get(), mask, 0, nullptr);
        }
        XFillRectangle(client.get(), mask, m_pen, 0, 0, 64, 64);
        return mask;
    }
    /// Draws the box of a mask, opaque but for the last pixel of its last line.
    void DrawMask(Pixmap mask, const Box& box, bool lastPixel = true) {
        XImage* image =
            XCreateImage(client.get(), DefaultVisual(client.get(), DefaultScreen(client.get())), 1,
                         ZPixmap, 0, nullptr, static_cast<unsigned int>(box.width),
                         static_cast<unsigned int>(box.height), 32, 0);
        std::vector<char> pixels(
            static_cast<size_t>(image->bytes_per_line) * static_cast<size_t>(box.height), '\xff');
        image->data = pixels.data();
        XPutPixel(image, box.width - 1, box.height - 1, lastPixel ? 1 : 0);
        XPutImage(client.get(), mask, m_pen, image, 0, 0, box.x, box.y,
                  static_cast<unsigned int>(box.width), static_cast<unsigned int>(box.height));
        image->data = nullptr;
        XDestroyImage(image);
    }
    void Shape(Window window, Pixmap mask) {
        XShapeCombineMask(client.get(), window, ShapeBounding, 0, 0, mask, ShapeSet);
    }
    /// Draws a frame of the first window.
    void DrawFrame(const Box& box, bool lastPixel = true) {
        DrawMask(m_mask, box, lastPixel);
        Shape(m_one, m_mask);
    }
    /// The number of rectangles that the window's shape consists of.
    int Parts(Window window) {
        int count = 0;
        int ordering = 0;
        XFree(XShapeGetRectangles(client.get(), window, ShapeBounding, &count, &ordering));
        return count;
    }
    unsigned long Requests() { return NextRequest(client.get()); }

    XDisplay m_screen;
    std::unique_ptr<Display, Close> client{XOpenDisplay(m_screen.Name().c_str())};
    Window m_one;
    Window m_other;
    GC m_pen = nullptr;
    Pixmap m_mask;
};

TEST_F(TheShapeOfAWindow, IsNotSentAgainForAFrameInsideIt) {
    DrawFrame(PANEL);
    const unsigned long before = Requests();
    DrawFrame(ROW);
    DrawFrame(PANEL);
    EXPECT_EQ(Requests(), before);
    EXPECT_EQ(Parts(m_one), 1);
}

TEST_F(TheShapeOfAWindow, GrowsAndShrinks) {
    DrawFrame(ROW);
    DrawFrame(PANEL, false);
    EXPECT_EQ(Parts(m_one), 2);
    DrawFrame(ROW);
    EXPECT_EQ(Parts(m_one), 2);
    DrawFrame(PANEL);
    EXPECT_EQ(Parts(m_one), 1);
    // The last pixel of the row is in the panel's middle.
    DrawFrame(ROW, false);
    EXPECT_EQ(Parts(m_one), 4);
}

TEST_F(TheShapeOfAWindow, IsSetForEachWindow) {
    DrawFrame(PANEL);
    DrawFrame(PANEL, false);
    Shape(m_other, m_mask);
    EXPECT_EQ(Parts(m_one), 2);
    EXPECT_EQ(Parts(m_other), 2);
}

TEST_F(TheShapeOfAWindow, IsSetAgainAfterItWasRemoved) {
    DrawFrame(PANEL, false);
    Shape(m_one, None);
    EXPECT_EQ(Parts(m_one), 1);
    Shape(m_one, m_mask);
    EXPECT_EQ(Parts(m_one), 2);
}

TEST_F(TheShapeOfAWindow, IsThatOfTheNewMask) {
    DrawFrame(PANEL);
    m_mask = AddMask();
    DrawFrame(PANEL, false);
    EXPECT_EQ(Parts(m_one), 2);
}

/// A window of the toolkit, which waits for the server with XSync() before it sends a frame.
class AWindowsFrame : public TheShapeOfAWindow {
protected:
    AWindowsFrame() {
        // As the port does; the modules of the toolkit need a system bus.
        setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
        setenv("ECORE_EVAS_FORCE_SYNC_RENDER", "1", 1);
        ecore_evas_init();
        m_canvas = ecore_evas_software_x11_new(m_screen.Name().c_str(), 0, 0, 0, 64, 64);
        Evas* canvas = ecore_evas_get(m_canvas);
        Evas_Object* panel = evas_object_rectangle_add(canvas);
        evas_object_resize(panel, 64, 64);
        evas_object_show(panel);
        desktop::SendFramesAtOnce(panel);
        evas_event_callback_priority_add(canvas, EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                         EVAS_CALLBACK_PRIORITY_AFTER, OnSend, this);
        ecore_evas_show(m_canvas);
    }
    ~AWindowsFrame() override {
        ecore_evas_free(m_canvas);
        ecore_evas_shutdown();
    }

    /// The requests of an XSync() of the test's client.
    unsigned long Sync() {
        const unsigned long before = Requests();
        XSync(client.get(), False);
        return Requests() - before;
    }
    static void OnSend(void* test, Evas*, void*) {
        static_cast<AWindowsFrame*>(test)->m_whileSending =
            static_cast<AWindowsFrame*>(test)->Sync();
    }
    /// Draws until a frame is sent and returns the requests of an XSync() meanwhile.
    unsigned long WhileSending() {
        m_whileSending.reset();
        while (!m_whileSending) {
            ecore_evas_manual_render(m_canvas);
            ecore_main_loop_iterate_may_block(0);
        }
        return *m_whileSending;
    }

    Ecore_Evas* m_canvas = nullptr;
    std::optional<unsigned long> m_whileSending;
};

TEST_F(AWindowsFrame, DoesNotWaitForTheServerIfTheWindowIsShaped) {
    ecore_evas_shaped_set(m_canvas, EINA_TRUE);
    EXPECT_EQ(WhileSending(), 0U);
    EXPECT_EQ(Sync(), 1U) << "after the frame";
}

TEST_F(AWindowsFrame, WaitsForTheServerIfTheWindowIsNotShaped) {
    EXPECT_EQ(WhileSending(), 1U);
}

}  // namespace
}  // namespace applist::test
