// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/theme/Scene.h"

#include <Ecore_Evas.h>
#include <Edje.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <string_view>

namespace applist::test {
namespace {

constexpr uint32_t OPACITY = 0xFF000000;

Evas* CanvasOf(const Evas_Object* window) {
    return evas_object_evas_get(window);
}

std::string GroupOf(const Evas_Object* object) {
    const char* group = nullptr;
    if (std::strcmp(evas_object_type_get(object), "edje") == 0) {
        edje_object_file_get(object, nullptr, &group);
    }
    return group != nullptr ? group : "";
}

// The toolkit complains about being asked for the members of an object that cannot have any.
bool HasMembers(const Evas_Object* object) {
    constexpr std::array<std::string_view, 5> PLAIN{"rectangle", "image", "text", "textblock",
                                                    "vg"};
    return std::find(PLAIN.begin(), PLAIN.end(), evas_object_type_get(object)) == PLAIN.end();
}

void Collect(Evas_Object* object, const std::string& group, std::vector<Evas_Object*>& found) {
    if (evas_object_visible_get(object) == EINA_FALSE) {
        return;
    }
    if (GroupOf(object) == group) {
        found.push_back(object);
    }
    Eina_List* members = HasMembers(object) ? evas_object_smart_members_get(object) : nullptr;
    for (Eina_List* each = members; each != nullptr; each = eina_list_next(each)) {
        Collect(static_cast<Evas_Object*>(eina_list_data_get(each)), group, found);
    }
    eina_list_free(members);
}

// What an sRGB channel amounts to in light.
double Linear(uint32_t channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(uint32_t colour) {
    return 0.2126 * Linear(colour >> 16U & 0xFF) + 0.7152 * Linear(colour >> 8U & 0xFF) +
           0.0722 * Linear(colour & 0xFF);
}

}  // namespace

bool Box::Contains(const Box& other) const {
    return other.x >= x && other.y >= y && other.Right() <= Right() && other.Bottom() <= Bottom();
}

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << box.width << 'x' << box.height << " at " << box.x << ',' << box.y;
}

Picture Picture::Cut(const Box& box) const {
    Picture part{box.width, box.height, {}};
    for (int y = box.y; y < box.Bottom(); ++y) {
        const auto row = pixels.begin() + static_cast<ptrdiff_t>(y) * width;
        part.pixels.insert(part.pixels.end(), row + box.x, row + box.Right());
    }
    return part;
}

Box Picture::Painted() const {
    int left = width;
    int right = 0;
    int top = height;
    int bottom = 0;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if ((At(x, y) & OPACITY) != 0) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
    }
    return right > 0 ? Box{left, top, right - left, bottom - top} : Box{};
}

Picture Draw(Evas_Object* window) {
    Ecore_Evas* canvas = ecore_evas_ecore_evas_get(CanvasOf(window));
    ecore_evas_manual_render(canvas);
    Picture picture;
    ecore_evas_geometry_get(canvas, nullptr, nullptr, &picture.width, &picture.height);
    const auto* pixels = static_cast<const uint32_t*>(ecore_evas_buffer_pixels_get(canvas));
    picture.pixels.assign(pixels, pixels + ptrdiff_t{picture.width} * picture.height);
    return picture;
}

bool SavePng(Evas_Object* window, const Picture& picture, const std::filesystem::path& file) {
    Evas_Object* image = evas_object_image_add(CanvasOf(window));
    evas_object_image_alpha_set(image, EINA_TRUE);
    evas_object_image_size_set(image, picture.width, picture.height);
    evas_object_image_data_copy_set(image, const_cast<uint32_t*>(picture.pixels.data()));
    const Eina_Bool written = evas_object_image_save(image, file.c_str(), nullptr, "compress=9");
    evas_object_del(image);
    return written != EINA_FALSE;
}

Picture LoadPng(Evas_Object* window, const std::filesystem::path& file) {
    Evas_Object* image = evas_object_image_add(CanvasOf(window));
    evas_object_image_file_set(image, file.c_str(), nullptr);
    Picture picture;
    evas_object_image_size_get(image, &picture.width, &picture.height);
    const auto* pixels =
        static_cast<const uint32_t*>(evas_object_image_data_get(image, EINA_FALSE));
    if (pixels != nullptr) {
        picture.pixels.assign(pixels, pixels + ptrdiff_t{picture.width} * picture.height);
    }
    evas_object_del(image);
    return picture;
}

std::vector<Evas_Object*> ObjectsOf(Evas_Object* window, const std::string& group) {
    std::vector<Evas_Object*> found;
    for (Evas_Object* object = evas_object_bottom_get(CanvasOf(window)); object != nullptr;
         object = evas_object_above_get(object)) {
        Collect(object, group, found);
    }
    std::sort(found.begin(), found.end(), [](const Evas_Object* one, const Evas_Object* other) {
        return BoxOf(one).y < BoxOf(other).y;
    });
    return found;
}

Box BoxOf(const Evas_Object* object) {
    Box box;
    evas_object_geometry_get(object, &box.x, &box.y, &box.width, &box.height);
    return box;
}

Box BoxOf(const Evas_Object* object, const char* part) {
    const Box whole = BoxOf(object);
    Box box;
    edje_object_part_geometry_get(object, part, &box.x, &box.y, &box.width, &box.height);
    box.x += whole.x;
    box.y += whole.y;
    return box;
}

Box TextBoxOf(const Evas_Object* object, const char* part) {
    return BoxOf(edje_object_part_object_get(object, part));
}

std::string TextOf(const Evas_Object* object, const char* part) {
    const char* text = evas_object_text_text_get(edje_object_part_object_get(object, part));
    return text != nullptr ? text : "";
}

std::string StateOf(const Evas_Object* object, const char* part) {
    return edje_object_part_state_get(object, part, nullptr);
}

double Contrast(uint32_t one, uint32_t other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace applist::test
