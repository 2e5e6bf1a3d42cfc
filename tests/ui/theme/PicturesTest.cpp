// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
//
// Compares every state with its picture in docs/theme.md. scripts/pictures creates the pictures.
#include <Edje.h>
#include <algorithm>
#include <cstdlib>
#include <functional>

#include <gtest/gtest.h>

#include "alert-syspopup/AlertWindow.h"
#include "i18n_text.h"
#include "ui/theme/ThemedList.h"

namespace applist::test {
namespace {

using desktop::Alert;
using desktop::AlertWindow;

// Half the size of a television's screen keeps the files small and all parts visible.
constexpr int HEIGHT = 540;

// The fonts belong to one release, and so do the pixels, with two exceptions: the last bits of
// blends depend on the processor's instructions, and an update of the font engine may move edges of
// letters. So a channel may differ by a tenth, and a few pixels may differ by any amount. The
// smallest part that matters, the focused row's marker, has twice that many pixels.
constexpr int CHANNEL_TOLERANCE = 24;
constexpr int PIXEL_TOLERANCE = 40;

bool IsClose(uint32_t one, uint32_t other) {
    for (const unsigned shift : {0U, 8U, 16U, 24U}) {
        const int difference =
            static_cast<int>(one >> shift & 0xFFU) - static_cast<int>(other >> shift & 0xFFU);
        if (std::abs(difference) > CHANNEL_TOLERANCE) {
            return false;
        }
    }
    return true;
}

testing::AssertionResult Matches(const Picture& drawn, const Picture& stored) {
    if (drawn.width != stored.width || drawn.height != stored.height) {
        return testing::AssertionFailure() << "drawn " << drawn.width << 'x' << drawn.height
                                           << ", stored " << stored.width << 'x' << stored.height;
    }
    int different = 0;
    for (size_t i = 0; i < drawn.pixels.size(); ++i) {
        different += IsClose(drawn.pixels[i], stored.pixels[i]) ? 0 : 1;
    }
    return (different <= PIXEL_TOLERANCE ? testing::AssertionSuccess()
                                         : testing::AssertionFailure())
           << different << " pixels differ";
}

std::filesystem::path StoredPicture(const std::string& name) {
    return std::filesystem::path(std::getenv("APPLIST_SOURCE")) / "tests/ui/theme/pictures" /
           (name + ".png");
}

void Check(Evas_Object* window, const Evas_Object* panel, const std::string& name) {
    const Picture drawn = Draw(window).Cut(BoxOf(panel));
    if (const char* folder = std::getenv("APPLIST_SAVE_PICTURES")) {
        ASSERT_TRUE(SavePng(window, drawn, std::filesystem::path(folder) / (name + ".png")));
        return;
    }
    EXPECT_TRUE(Matches(drawn, LoadPng(window, StoredPicture(name)))) << name;
}

const std::vector<std::string> FEW_ROWS{"Teletext", "Weather", "News & sport", "Games"};

struct State {
    const char* name;
    Look look;
    std::function<void(ThemedList&)> bringAbout;
};
std::ostream& operator<<(std::ostream& out, const State& state) {
    return out << state.name;
}

void ShowRows(ThemedList& list) {
    list.Show(FEW_ROWS, 1);
}

void ShowScrolled(ThemedList& list) {
    list.Show(NumberedRows(14), 9);
    HeadlessToolkit::Settle();
}

void ShowScripts(ThemedList& list) {
    list.Show({"العربية", "עברית", "हिन्दी", "ภาษาไทย", "中文 日本語 한국어", "<b>&amp;</b>\n\tetc.",
               "An application whose name is longer than a row", "📺 Emoji ⚽ 🎵"});
}

const std::string LONG_NAME = "Registro elettorale e servizi del Comune di Reggio nell'Emilia";

void ShowWrapped(ThemedList& list) {
    list.Show({"Teletext", LONG_NAME, "Weather"}, 1);
}

void ShowEmpty(ThemedList& list) {
    ASSERT_TRUE(HeadlessToolkit::RunUntil([&] {
        const char* text = edje_object_part_text_get(list.popup(), "applist.empty");
        return text != nullptr && *text != '\0';
    }));
    HeadlessToolkit::Settle();
}

void ShowClosing(ThemedList& list) {
    list.Show(NumberedRows(14), 9);
    edje_object_part_text_set(list.popup(), "applist.note", i18n_get_text("LIST_CLOSES"));
    edje_object_signal_emit(list.popup(), "applist,note,visible", "applist");
    HeadlessToolkit::Settle();
}

void ShowMirrored(ThemedList& list) {
    edje_object_part_text_set(list.popup(), "elm.text.title", "خدمات البيانات");
    list.Show(
        {"الأخبار", "الطقس", "Teletext", "الرياضة", "ألعاب", "راديو", "تسوق", "سينما", "أخرى"});
    HeadlessToolkit::Settle();
}

const Look STANDARD{Variant::STANDARD, HEIGHT, false};
const Look HIGH_CONTRAST{Variant::HIGH_CONTRAST, HEIGHT, false};
const Look MIRRORED{Variant::STANDARD, HEIGHT, true};
const Look STILL{Variant::STANDARD, HEIGHT, false, 100, 16.0 / 9, true};
const Look LARGE_STILL{Variant::HIGH_CONTRAST, HEIGHT, false, 175, 16.0 / 9, true};
const Look LARGE{Variant::STANDARD, HEIGHT, false, 175};
const Look LARGE_MIRRORED{Variant::STANDARD, HEIGHT, true, 175};
const Look LARGE_HIGH_CONTRAST{Variant::HIGH_CONTRAST, HEIGHT, false, 175};

class AListState : public testing::TestWithParam<State> {};

TEST_P(AListState, LooksAsStoredWithGroupsOfTheThemeOnly) {
    ThemedList list(GetParam().look);
    GetParam().bringAbout(list);
    Check(list.window(), list.panel(), GetParam().name);
    EXPECT_EQ(ThemesOf(list.window()), std::set<std::string>{ThemeFile(GetParam().look)});
}

INSTANTIATE_TEST_SUITE_P(
    States, AListState,
    testing::Values(State{"empty", STANDARD, ShowEmpty}, State{"rows", STANDARD, ShowRows},
                    State{"scrolled", STANDARD, ShowScrolled},
                    State{"names", STANDARD, ShowScripts},
                    State{"mirrored", MIRRORED, ShowMirrored},
                    State{"high_contrast_empty", HIGH_CONTRAST, ShowEmpty},
                    State{"high_contrast_rows", HIGH_CONTRAST, ShowRows},
                    State{"high_contrast_scrolled", HIGH_CONTRAST, ShowScrolled},
                    State{"wrapped", STILL, ShowWrapped},
                    State{"high_contrast_large_wrapped", LARGE_STILL, ShowWrapped},
                    State{"closing", STANDARD, ShowClosing},
                    State{"high_contrast_closing", HIGH_CONTRAST, ShowClosing},
                    State{"large_closing", LARGE, ShowClosing},
                    State{"large_empty", LARGE, ShowEmpty}, State{"large_rows", LARGE, ShowRows},
                    State{"large_mirrored", LARGE_MIRRORED, ShowMirrored},
                    State{"high_contrast_large_scrolled", LARGE_HIGH_CONTRAST, ShowScrolled}),
    [](const auto& state) { return std::string(state.param.name); });

struct AlertState {
    const char* name;
    Look look;
    Alert::Kind kind;
};

std::ostream& operator<<(std::ostream& out, const AlertState& state) {
    return out << state.name;
}

class AnAlertState : public testing::TestWithParam<AlertState> {};

TEST_P(AnAlertState, LooksAsStoredWithGroupsOfTheThemeOnly) {
    HeadlessToolkit toolkit({ThemeFile(GetParam().look)});
    Apply(GetParam().look);
    const auto alert = AlertWindow::Create("alert");
    evas_object_resize(alert->window(), HEIGHT * 16 / 9, HEIGHT);
    alert->Show({GetParam().kind, "This channel offers no data services at the moment."});
    HeadlessToolkit::Settle();
    Check(alert->window(), alert->panel(), GetParam().name);
    EXPECT_EQ(ThemesOf(alert->window()), std::set<std::string>{ThemeFile(GetParam().look)});
}

INSTANTIATE_TEST_SUITE_P(
    States, AnAlertState,
    testing::Values(AlertState{"alert", STANDARD, Alert::Kind::NOTIFICATION},
                    AlertState{"alert_unavailable", STANDARD, Alert::Kind::UNAVAILABLE},
                    AlertState{"high_contrast_alert", HIGH_CONTRAST, Alert::Kind::NOTIFICATION},
                    AlertState{"high_contrast_alert_unavailable", HIGH_CONTRAST,
                               Alert::Kind::UNAVAILABLE},
                    AlertState{"large_alert", LARGE, Alert::Kind::UNAVAILABLE}),
    [](const auto& state) { return std::string(state.param.name); });

/// Compares the stored picture of rows with the same rows after removing a part of the focused row.
class AStoredPicture : public testing::Test {
protected:
    AStoredPicture() {
        ShowRows(list);
        row = list.row(FEW_ROWS[1]);
    }
    // The toolkit returns a const object, but it may be hidden.
    void Hide(const char* part) {
        evas_object_hide(const_cast<Evas_Object*>(edje_object_part_object_get(row, part)));
    }
    testing::AssertionResult StillMatches() {
        return Matches(Draw(list.window()).Cut(BoxOf(list.panel())),
                       LoadPng(list.window(), StoredPicture("rows")));
    }

    ThemedList list{STANDARD};
    Evas_Object* row = nullptr;
};

TEST_F(AStoredPicture, DetectsAMissingMarker) {
    ASSERT_TRUE(StillMatches());
    Hide("marker");
    EXPECT_FALSE(StillMatches());
}

}  // namespace
}  // namespace applist::test
