// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <Ecore_Input.h>

#include <gtest/gtest.h>

#include "display/EventHandler.h"
#include "display/KeyFrames.h"
#include "display/Windows.h"
#include "support/HeadlessToolkit.h"

namespace applist::test {
namespace {

using desktop::EventHandler;
using desktop::KeyFrames;
using desktop::Windows;

constexpr double NO_TICK_SECONDS = 3600;

/// A window with a box that each key moves, on a display whose ticks never come.
class AKeysFrame : public testing::Test {
protected:
    AKeysFrame() {
        evas_object_resize(m_window, 200, 100);
        evas_object_resize(m_box, 10, 10);
        evas_object_show(m_box);
        evas_object_show(m_window);
        HeadlessToolkit::Settle();
        ecore_animator_frametime_set(NO_TICK_SECONDS);
        evas_event_callback_add(Canvas(), EVAS_CALLBACK_RENDER_POST, OnRendered, this);
    }
    ~AKeysFrame() override {
        evas_event_callback_del_full(Canvas(), EVAS_CALLBACK_RENDER_POST, OnRendered, this);
        evas_object_del(m_window);
    }

    Evas* Canvas() const { return evas_object_evas_get(m_window); }
    static bool Draws(int frames, const int& drawn) {
        return HeadlessToolkit::RunUntil([&] { return drawn >= frames; });
    }
    /// All keys that were sent so far have been handled.
    bool Handled() const {
        return HeadlessToolkit::RunUntil([this] { return m_keys == m_sent; });
    }
    void Send(const char* key) {
        HeadlessToolkit::QueueKey(key, true);
        ++m_sent;
    }

    int m_drawn = 0;

private:
    static Eina_Bool OnKey(void* test, int /*type*/, void* /*key*/) {
        auto& self = *static_cast<AKeysFrame*>(test);
        evas_object_move(self.m_box, ++self.m_keys * 10, 0);
        return ECORE_CALLBACK_PASS_ON;
    }
    static void OnRendered(void* test, Evas* /*canvas*/, void* /*info*/) {
        ++static_cast<AKeysFrame*>(test)->m_drawn;
    }

    HeadlessToolkit m_toolkit;
    Windows m_windows{{[](bool) {}, [] {}}};
    EventHandler m_onKey = EventHandler::Behind(ECORE_EVENT_KEY_DOWN, OnKey, this);
    KeyFrames m_frames{m_windows};
    Evas_Object* m_window = elm_win_util_standard_add("keys", "keys");
    Evas_Object* m_box = evas_object_rectangle_add(Canvas());
    int m_keys = 0;
    int m_sent = 0;
};

TEST_F(AKeysFrame, IsDrawnWithoutWaitingForATick) {
    Send("Down");
    EXPECT_TRUE(Draws(1, m_drawn));
    Send("Down");
    EXPECT_TRUE(Draws(2, m_drawn));
}

TEST_F(AKeysFrame, IsOneForKeysThatComeTogether) {
    for (int key = 0; key < 5; ++key) {
        Send("Down");
    }
    ASSERT_TRUE(Handled());
    EXPECT_TRUE(Draws(1, m_drawn));
    EXPECT_EQ(m_drawn, 1);
}

}  // namespace
}  // namespace applist::test
