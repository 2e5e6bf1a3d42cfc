// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "display/Theme.h"
#include "fakes/FakePlatformLog.h"
#include "support/HeadlessToolkit.h"
#include "winset.h"

namespace applist::test {
namespace {

class WinsetTest : public testing::Test {
protected:
    void SetUp() override { m_window = elm_win_add(nullptr, "winset", ELM_WIN_BASIC); }
    void TearDown() override { evas_object_del(m_window); }

    const std::vector<std::string>& Answers() const { return m_answers; }

    /// A widget that records the messages it receives.
    Evas_Object* Widget(const char* style) {
        Evas_Object* layout = elm_layout_add(m_window);
        EXPECT_TRUE(elm_layout_theme_set(layout, "layout", "winset", style));
        elm_layout_signal_callback_add(layout, "number,*", "theme", OnAnswer, &m_answers);
        return layout;
    }

private:
    static void OnAnswer(void* answers, Evas_Object* /*layout*/, const char* signal,
                         const char* /*source*/) {
        static_cast<std::vector<std::string>*>(answers)->emplace_back(signal);
    }

    HeadlessToolkit m_toolkit{{WINSET_THEME}};
    Evas_Object* m_window = nullptr;
    std::vector<std::string> m_answers;
};

TEST_F(WinsetTest, HandsTheThemeEachNumber) {
    Evas_Object* widget = Widget("numbered");
    edje_object_message_send_to_winset(widget, 11);
    edje_object_message_send_to_winset(widget, -1);
    HeadlessToolkit::Settle();
    EXPECT_THAT(Answers(), testing::ElementsAre("number,11", "number,-1"));
}

TEST_F(WinsetTest, ReachesThatWidgetAlone) {
    Evas_Object* widget = Widget("numbered");
    Widget("numbered");
    edje_object_message_send_to_winset(widget, 11);
    HeadlessToolkit::Settle();
    EXPECT_THAT(Answers(), testing::ElementsAre("number,11"));
}

TEST_F(WinsetTest, IsLostOnAThemeWithoutVariants) {
    edje_object_message_send_to_winset(Widget("plain"), 11);
    HeadlessToolkit::Settle();
    EXPECT_THAT(Answers(), testing::IsEmpty());
}

TEST_F(WinsetTest, IsLostWithoutAWidget) {
    edje_object_message_send_to_winset(nullptr, 11);
    HeadlessToolkit::Settle();
    EXPECT_THAT(Answers(), testing::IsEmpty());
}

// Otherwise a theme for an older release would silently lack the window's parts.
TEST(ATheme, WithoutAVersionIsLogged) {
    const HeadlessToolkit toolkit{{}};
    desktop::LoadTheme(WINSET_THEME);
    EXPECT_THAT(LogMessages(),
                testing::ElementsAre(std::string("The toolkit rejects the theme ") + WINSET_THEME +
                                     ": it does not have the data item \"version\""));
}

}  // namespace
}  // namespace applist::test
