// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// The number of frames with reduced motion.
#include <algorithm>

#include "support/AccessibilityPage.h"
#include "ui/scene/SceneTest.h"

namespace applist::test {
namespace {

class TheStillList : public SceneTest, public testing::WithParamInterface<const char*> {
protected:
    TheStillList() : SceneTest("applist-still.edj") {
        evas_event_callback_add(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                Count, &m_pictures);
    }
    ~TheStillList() override {
        evas_event_callback_del_full(evas_object_evas_get(window()), EVAS_CALLBACK_RENDER_FLUSH_PRE,
                                     Count, &m_pictures);
    }
    TheStillList(const TheStillList&) = delete;
    TheStillList& operator=(const TheStillList&) = delete;
    TheStillList(TheStillList&&) = delete;
    TheStillList& operator=(TheStillList&&) = delete;

    /// Waits until a frame would have been drawn if one were due.
    static void Rest() {
        HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(150));
    }

    /// The number of frames that have changed pixels on the screen.
    int m_pictures = 0;

private:
    static void Count(void* pictures, Evas* /*canvas*/, void* /*info*/) {
        ++*static_cast<int*>(pictures);
    }
};

TEST_P(TheStillList, DrawsOneFrameForAKeyAndNoneAtRest) {
    Fill(12);
    Rest();
    int most = 0;
    for (int press = 0; press < 14; ++press) {
        m_pictures = 0;
        Forget();
        Type(GetParam());
        Rest();
        EXPECT_EQ(m_pictures, 1) << press;
        most = std::max(most, m_pictures);
        ASSERT_FALSE(frames().empty());
        EXPECT_EQ(frames().back().focused, Selected()) << frames().back();
        EXPECT_TRUE(frames().back().focusedInside) << frames().back();
    }
    EXPECT_TRUE(IsStated("WCAG 2.3.3 animation from interactions with reduced motion", most == 1,
                         WithUnit(most, 0, " frame for a key")));
    m_pictures = 0;
    HeadlessToolkit::RunUntil([] { return false; }, std::chrono::milliseconds(1500));
    EXPECT_EQ(m_pictures, 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, TheStillList, testing::Values("Down", "Up", "Right", "Left"),
                         [](const auto& test) { return std::string(test.param); });

}  // namespace
}  // namespace applist::test
