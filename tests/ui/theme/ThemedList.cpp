// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/theme/ThemedList.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "applist/DefaultAppListRenderer.h"
#include "display/Theme.h"
#include "toolkit-internals/ShownText.h"

namespace applist::test {
namespace {

// The mark's opacity at the end of fading in or out.
int MarkOf(const Evas_Object* row) {
    int opacity = 0;
    evas_object_color_get(edje_object_part_object_get(row, "bar"), nullptr, nullptr, nullptr,
                          &opacity);
    return opacity;
}

}  // namespace

class ThemedList::Renderer : public DefaultAppListRenderer {
public:
    using DefaultAppListRenderer::DefaultAppListRenderer;
    using DefaultAppListRenderer::m_window;
};

std::ostream& operator<<(std::ostream& out, const Look& look) {
    return out << ThemeFile(look).filename() << ", " << look.Width() << 'x' << look.height
               << (look.rightToLeft ? ", mirrored" : "");
}

std::filesystem::path ThemeFile(const Look& look) {
    const bool highContrast = look.variant == Variant::HIGH_CONTRAST;
    const std::filesystem::path file =
        desktop::ThemeFileOf({highContrast, look.textSize, look.reducedMotion});
    return std::filesystem::path(std::getenv("APPLIST_THEMES")) / file.filename();
}

void Apply(const Look& look) {
    elm_config_scale_set(look.height / 1080.0);
    elm_config_mirrored_set(look.rightToLeft ? EINA_TRUE : EINA_FALSE);
}

ThemedList::ThemedList(const Look& look) : m_toolkit({ThemeFile(look)}) {
    Apply(look);
    m_renderer = std::make_shared<Renderer>("org.vantu.applist");
    evas_object_resize(window(), look.Width(), look.height);
    m_renderer->SetModel(&m_model);
    HeadlessToolkit::GiveFocus(window());
}

void ThemedList::Show(const std::vector<std::string>& names, size_t focused) {
    std::vector<AppListItem*> items;
    for (const std::string& name : names) {
        m_items.emplace_back(name, std::to_string(m_items.size()));
        items.push_back(&m_items.back());
    }
    m_model.Show(items, items.at(focused));
    WaitForFocus(names.at(focused));
}

void ThemedList::Focus(size_t row) {
    m_model.Select(m_model.items.at(row));
    WaitForFocus(m_model.items.at(row)->GetVisibleName());
}

void ThemedList::Clear() {
    m_model.Show({}, nullptr);
    HeadlessToolkit::Settle();
}

void ThemedList::WaitForFocus(const std::string& name) const {
    constexpr int OPAQUE = 255;
    EXPECT_TRUE(HeadlessToolkit::RunUntil([&] {
        const auto shown = rows();
        return row(name) != nullptr && std::all_of(shown.begin(), shown.end(), [&](auto* each) {
                   return MarkOf(each) == (each == row(name) ? OPAQUE : 0);
               });
    })) << "no focus mark on "
        << name;
}

bool ThemedList::WaitForSlide(double seconds) const {
    return HeadlessToolkit::RunUntil(
        [this] {
            const auto shown = rows();
            return std::any_of(shown.begin(), shown.end(),
                               [](auto* each) { return StateOf(each, "name") == "sliding"; });
        },
        std::chrono::milliseconds(static_cast<int>(seconds * 1000)));
}

void ThemedList::Pass(double seconds) {
    HeadlessToolkit::RunUntil([] { return false; },
                              std::chrono::milliseconds(static_cast<int>(seconds * 1000)));
}

Evas_Object* ThemedList::window() const {
    return m_renderer->m_window;
}

Evas_Object* ThemedList::Only(const std::string& group) const {
    const auto objects = ObjectsOf(window(), group);
    EXPECT_EQ(objects.size(), 1U) << group;
    return objects.at(0);
}

std::vector<Evas_Object*> ThemedList::rows() const {
    const Box inside = BoxOf(list());
    auto rows = ObjectsOf(window(), ROW_GROUP);
    std::erase_if(rows, [&](const Evas_Object* row) {
        const Box box = BoxOf(row);
        return box.y >= inside.Bottom() || box.Bottom() <= inside.y;
    });
    return rows;
}

Evas_Object* ThemedList::row(const std::string& name) const {
    const auto shown = rows();
    const auto found = std::find_if(shown.begin(), shown.end(), [&](const Evas_Object* row) {
        return TextOf(row, "name") == desktop::ShownText(name.c_str());
    });
    return found != shown.end() ? *found : nullptr;
}

std::vector<std::string> NumberedRows(int count) {
    std::vector<std::string> names;
    for (int row = 1; row <= count; ++row) {
        names.push_back("Row " + std::to_string(row));
    }
    return names;
}

int HeightOfCapitalH(ThemedList& list) {
    list.Show({"Focused", "HHHH"});
    const Box row = BoxOf(list.row("HHHH"));
    const Picture picture = Draw(list.window()).Cut(row);
    const uint32_t ground = picture.At(0, 0);
    int first = row.height;
    int last = -1;
    for (int y = 0; y < row.height; ++y) {
        for (int x = 0; x < row.width; ++x) {
            // The edges of letters are blends; a pixel counts if it is closer to the letter.
            if (Contrast(picture.At(x, y), ground) > 4.5) {
                first = std::min(first, y);
                last = y;
            }
        }
    }
    return last - first + 1;
}

double AngleOf(int length, int pictureHeight) {
    constexpr double DEGREES = 180 / 3.14159265358979323846;
    return std::atan(length / (3.0 * pictureHeight)) * DEGREES;
}

}  // namespace applist::test
