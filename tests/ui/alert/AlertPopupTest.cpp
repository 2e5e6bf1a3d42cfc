// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0

// The popup on real widgets without a display.

#include <Elementary.h>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "alert-syspopup/AlertPopup.h"
#include "alert-syspopup/AlertWindow.h"
#include "fakes/FakeApp.h"
#include "fakes/FakePlatformLog.h"
#include "fakes/FakeText.h"
#include "list/News.h"
#include "support/HeadlessToolkit.h"

namespace applist::test {
namespace {

using desktop::Alert;
using desktop::AlertPopup;
using desktop::ReadAlert;
using testing::ElementsAre;

constexpr const char* REFUSAL = "Launch request refused: its extra data does not contain \"text\"";
constexpr double A_LONG_TIME = 3600.0;
constexpr double NO_TIME = 0.001;

app_control_s Request(const std::string& type, const std::string& text) {
    return {"org.vantu.alert-syspopup", {{"text", text}, {"type", type}}};
}

class Popup : public testing::Test {
protected:
    explicit Popup(double seconds = A_LONG_TIME) : popup("alert", seconds) {}

    void SetUp() override {
        TheApp() = {};
        ClearLog();
        popup.Create();
    }
    void TearDown() override { popup.Terminate(); }

    static std::filesystem::path Theme(bool large) {
        const std::filesystem::path theme = std::getenv("APPLIST_THEME");
        return large ? theme.parent_path() / "applist-high-contrast-175.edj" : theme;
    }
    // The text of a part of the panel, decoded from markup.
    std::string Shown(const char* part) const {
        char* text = elm_entry_markup_to_utf8(elm_layout_text_get(popup.window()->panel(), part));
        std::string shown = text;
        std::free(text);
        return shown;
    }
    std::string Look() const {
        HeadlessToolkit::Settle();
        return edje_object_part_state_get(elm_layout_edje_get(popup.window()->panel()), "badge",
                                          nullptr);
    }
    int Height() const {
        HeadlessToolkit::Settle();
        int height = 0;
        evas_object_geometry_get(popup.window()->panel(), nullptr, nullptr, nullptr, &height);
        return height;
    }

    HeadlessToolkit toolkit{{std::getenv("APPLIST_THEME")}};
    AlertPopup popup;
};

class HastyPopup : public Popup {
protected:
    HastyPopup() : Popup(NO_TIME) {}
};

TEST_F(Popup, IsToldWithTitleAndText) {
    std::vector<std::string> told;
    const desktop::NewsListener listener([&](const desktop::News& news) {
        EXPECT_EQ(news.source, popup.window()->panel());
        told.push_back(news.title + ": " + news.text);
    });
    popup.Launch(Request("unavailable", "Nothing <b>here\xFF"));
    popup.Launch(Request("notification", "Hello"));
    EXPECT_THAT(told,
                ElementsAre(TranslationOf("ALERT_TITLE_UNAVAILABLE") + ": Nothing <b>here\uFFFD",
                            TranslationOf("ALERT_TITLE_NOTIFICATION") + ": Hello"));
}

TEST_F(Popup, ShowsTheTextOfTheRequest) {
    popup.Launch(Request("notification", "Hello"));
    EXPECT_EQ(Shown("elm.text"), "Hello");
    EXPECT_EQ(Shown("elm.text.hint"), TranslationOf("ALERT_CLOSE_HINT"));
    EXPECT_TRUE(evas_object_visible_get(popup.window()->window()));
    EXPECT_THAT(Log(), ElementsAre(Debug("Showing as notification: Hello")));
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(Popup, ShowsMarkupAsItIs) {
    popup.Launch(Request("notification", "<b>Bread & butter</b>"));
    EXPECT_EQ(Shown("elm.text"), "<b>Bread & butter</b>");
}

TEST_F(Popup, ShowsTheTwoKindsDifferently) {
    popup.Launch(Request("notification", "Hello"));
    EXPECT_EQ(Shown("elm.text.title"), TranslationOf("ALERT_TITLE_NOTIFICATION"));
    EXPECT_EQ(Look(), "default");
    popup.Launch(Request("unavailable", "Hello"));
    EXPECT_EQ(Shown("elm.text.title"), TranslationOf("ALERT_TITLE_UNAVAILABLE"));
    EXPECT_EQ(Look(), "unavailable");
    popup.Launch(Request("notification", "Hello"));
    EXPECT_EQ(Look(), "default");
}

TEST_F(Popup, ReplacesTheAlertByTheNextOneInTheSameWindow) {
    popup.Launch(Request("notification", "First"));
    const Evas_Object* window = popup.window()->window();
    popup.Launch(Request("notification", "Second"));
    EXPECT_EQ(Shown("elm.text"), "Second");
    EXPECT_EQ(popup.window()->window(), window);
}

TEST_F(Popup, IsAsHighAsItsTextNeeds) {
    popup.Launch(Request("notification", "Short"));
    const int shortHeight = Height();
    std::string text;
    for (int word = 0; word < 60; ++word) {
        text += "words ";
    }
    popup.Launch(Request("notification", text));
    EXPECT_GT(Height(), shortHeight + 100);
    popup.Launch(Request("notification", "Short"));
    EXPECT_EQ(Height(), shortHeight);
}

// As if the viewer had changed a setting.
TEST_F(Popup, KeepsItsAlertInAnotherTheme) {
    popup.Launch(Request("unavailable", "Hello"));
    const int height = Height();
    for (const bool large : {true, false}) {
        elm_theme_overlay_del(nullptr, Theme(!large).c_str());
        elm_theme_overlay_add(nullptr, Theme(large).c_str());
        EXPECT_EQ(Look(), "unavailable");
        EXPECT_EQ(Shown("elm.text"), "Hello");
        EXPECT_EQ(Shown("elm.text.title"), TranslationOf("ALERT_TITLE_UNAVAILABLE"));
        EXPECT_EQ(Height() > height, large);
    }
    EXPECT_EQ(Height(), height);
}

TEST_F(Popup, EndsOnAFirstRequestWithoutAText) {
    popup.Launch({"org.vantu.alert-syspopup", {{"type", "notification"}}});
    EXPECT_EQ(popup.window(), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Error(REFUSAL), Event("ui_app_exit")));
    EXPECT_EQ(TheApp().exits, 1);
}

TEST_F(Popup, KeepsItsAlertOnALaterRequestWithoutAText) {
    popup.Launch(Request("unavailable", "Hello"));
    popup.Launch({"org.vantu.alert-syspopup", {{"type", "notification"}}});
    EXPECT_EQ(Shown("elm.text"), "Hello");
    EXPECT_EQ(Look(), "unavailable");
    EXPECT_THAT(Log(), ElementsAre(Debug("Showing as unavailable: Hello"), Error(REFUSAL)));
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(HastyPopup, EndsByItself) {
    popup.Launch(Request("notification", "Hello"));
    EXPECT_TRUE(HeadlessToolkit::RunUntil([] { return TheApp().exits == 1; }));
}

TEST_F(HastyPopup, EndsWhenNoRequestComes) {
    EXPECT_TRUE(HeadlessToolkit::RunUntil([] { return TheApp().exits == 1; }));
    EXPECT_EQ(popup.window(), nullptr);
}

TEST_F(Popup, StaysAtKeysThatDoNotCloseIt) {
    popup.Launch(Request("notification", "Hello"));
    for (const char* key : {"Up", "Down", "Left", "Right", "a"}) {
        HeadlessToolkit::PressKey(key);
        HeadlessToolkit::ReleaseKey(key);
    }
    HeadlessToolkit::Settle();
    EXPECT_EQ(TheApp().exits, 0);
}

TEST_F(Popup, StaysWhenAKeyIsReleasedThatWasPressedBeforeItCame) {
    popup.Launch(Request("notification", "Hello"));
    HeadlessToolkit::ReleaseKey("Return");
    HeadlessToolkit::Settle();
    EXPECT_EQ(TheApp().exits, 0);
}

class ClosingKey : public Popup, public testing::WithParamInterface<const char*> {};

TEST_P(ClosingKey, EndsThePopupWhenItIsReleased) {
    popup.Launch(Request("notification", "Hello"));
    HeadlessToolkit::PressKey(GetParam());
    HeadlessToolkit::Settle();
    EXPECT_EQ(TheApp().exits, 0);
    HeadlessToolkit::ReleaseKey(GetParam());
    HeadlessToolkit::Settle();
    EXPECT_EQ(TheApp().exits, 1);
}

INSTANTIATE_TEST_SUITE_P(Keys, ClosingKey,
                         testing::Values("XF86Back", "XF86Exit", "Return", "KP_Enter", "Select"),
                         [](const auto& key) { return std::string(key.param); });

TEST(Alert, IsReadFromTheExtraDataOfARequestInAnyOrder) {
    const auto alert = ReadAlert({"", {{"type", "unavailable"}, {"other", "x"}, {"text", "Hi"}}});
    ASSERT_TRUE(alert);
    EXPECT_EQ(alert->text, "Hi");
    EXPECT_EQ(alert->kind, Alert::Kind::UNAVAILABLE);
}

TEST(Alert, IsANotificationUnlessItSaysOtherwise) {
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}}})->kind, Alert::Kind::NOTIFICATION);
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}, {"type", "notification"}}})->kind,
              Alert::Kind::NOTIFICATION);
    EXPECT_EQ(ReadAlert({"", {{"text", "Hi"}, {"type", "new"}}})->kind, Alert::Kind::NOTIFICATION);
}

TEST(Alert, IsNoneWithoutAText) {
    EXPECT_FALSE(ReadAlert({"", {}}));
    EXPECT_FALSE(ReadAlert({"", {{"type", "notification"}}}));
    EXPECT_FALSE(ReadAlert({"", {{"text", ""}, {"type", "notification"}}}));
}

}  // namespace
}  // namespace applist::test
