// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Ecore.h>
#include <Ecore_Evas.h>
#include <cstdlib>

#include <gmock/gmock.h>

#include "support/Picture.h"
#include "support/XDisplay.h"
#include "toolkit-internals/FrameDrawing.h"

namespace applist::test {
namespace {

// The toolkit draws tiles of 16 by 16 pixels.
constexpr Box PANEL{320, 160, 160, 80};

/// A window that fills the screen, with a small visible object.
class TheFirstFrame : public testing::Test {
protected:
    TheFirstFrame() {
        // As the port does; the modules of the toolkit need a system bus.
        setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
        ecore_evas_init();
        m_window = ecore_evas_software_x11_new(m_screen.Name().c_str(), 0, 0, 0,
                                               m_screen.Area().width, m_screen.Area().height);
        AddRectangle(m_screen.Area(), 0);
        panel = AddRectangle(PANEL, 255);
        evas_event_callback_add(ecore_evas_get(m_window), EVAS_CALLBACK_RENDER_POST, OnRendered,
                                this);
        desktop::LimitFirstFrame(panel);
        ecore_evas_show(m_window);
    }
    ~TheFirstFrame() override {
        ecore_evas_free(m_window);
        ecore_evas_shutdown();
    }

    void Shape() { ecore_evas_shaped_set(m_window, EINA_TRUE); }
    /// Waits until a frame is drawn and returns the area that it has drawn.
    Box Draw() {
        m_drawn = {0, 0, 0, 0};
        while (eina_rectangle_is_empty(&m_drawn) != 0) {
            ecore_evas_manual_render(m_window);
            ecore_main_loop_iterate_may_block(0);
        }
        return {m_drawn.x, m_drawn.y, m_drawn.w, m_drawn.h};
    }
    Box Screen() const { return m_screen.Area(); }

    Evas_Object* panel = nullptr;

private:
    Evas_Object* AddRectangle(const Box& box, int alpha) {
        Evas_Object* rectangle = evas_object_rectangle_add(ecore_evas_get(m_window));
        evas_object_geometry_set(rectangle, box.x, box.y, box.width, box.height);
        evas_object_color_set(rectangle, 0, 0, 0, alpha);
        evas_object_show(rectangle);
        return rectangle;
    }
    static void OnRendered(void* test, Evas*, void* event) {
        const auto* frame = static_cast<Evas_Event_Render_Post*>(event);
        Eina_Rectangle& drawn = static_cast<TheFirstFrame*>(test)->m_drawn;
        const Eina_List* node = nullptr;
        void* part = nullptr;
        EINA_LIST_FOREACH(frame != nullptr ? frame->updated_area : nullptr, node, part) {
            const auto& area = *static_cast<Eina_Rectangle*>(part);
            if (eina_rectangle_is_empty(&drawn) != 0) {
                drawn = area;
            } else {
                eina_rectangle_union(&drawn, &area);
            }
        }
    }

    XDisplay m_screen;
    Ecore_Evas* m_window = nullptr;
    Eina_Rectangle m_drawn{0, 0, 0, 0};
};

TEST_F(TheFirstFrame, OfAShapedWindowIsLimitedToTheVisibleObjects) {
    Shape();
    EXPECT_EQ(Draw(), PANEL);
}

TEST_F(TheFirstFrame, DoesNotLimitLaterOnes) {
    Shape();
    Draw();
    evas_object_move(panel, 0, 0);
    const Box both{0, 0, PANEL.Right(), PANEL.Bottom()};
    EXPECT_TRUE(Draw().Contains(both));
}

TEST_F(TheFirstFrame, OfAnotherWindowIsTheWholeWindow) {
    EXPECT_TRUE(Draw().Contains(Screen()));
}

}  // namespace
}  // namespace applist::test
