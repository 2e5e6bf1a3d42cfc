// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Scene.h"

#include <Ecore_Evas.h>
#include <Edje.h>
#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <string_view>

namespace applist::test {
namespace {

Evas* CanvasOf(const Evas_Object* window) {
    return evas_object_evas_get(window);
}

struct Source {
    std::string file;
    std::string group;
};

// The theme file and the group of an object, both empty if it does not come from a theme.
Source SourceOf(const Evas_Object* object) {
    const char* file = nullptr;
    const char* group = nullptr;
    if (std::strcmp(evas_object_type_get(object), "edje") == 0) {
        edje_object_file_get(object, &file, &group);
    }
    return {file != nullptr ? file : "", group != nullptr ? group : ""};
}

// The toolkit logs an error when asked for the members of an object that is not a group.
bool HasMembers(const Evas_Object* object) {
    constexpr std::array<std::string_view, 7> PLAIN{"rectangle", "image", "text",   "textblock",
                                                    "line",      "vg",    "polygon"};
    return std::find(PLAIN.begin(), PLAIN.end(), evas_object_type_get(object)) == PLAIN.end();
}

using Visitor = std::function<void(Evas_Object*)>;

void VisitVisible(Evas_Object* object, const Visitor& visit) {
    if (evas_object_visible_get(object) == EINA_FALSE) {
        return;
    }
    visit(object);
    Eina_List* members = HasMembers(object) ? evas_object_smart_members_get(object) : nullptr;
    for (Eina_List* each = members; each != nullptr; each = eina_list_next(each)) {
        VisitVisible(static_cast<Evas_Object*>(eina_list_data_get(each)), visit);
    }
    eina_list_free(members);
}

void VisitAllVisible(const Evas_Object* window, const Visitor& visit) {
    for (Evas_Object* object = evas_object_bottom_get(CanvasOf(window)); object != nullptr;
         object = evas_object_above_get(object)) {
        VisitVisible(object, visit);
    }
}

}  // namespace

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
    VisitAllVisible(window, [&](Evas_Object* object) {
        if (SourceOf(object).group == group) {
            found.push_back(object);
        }
    });
    std::sort(found.begin(), found.end(), [](const Evas_Object* one, const Evas_Object* other) {
        return BoxOf(one).y < BoxOf(other).y;
    });
    return found;
}

std::set<std::string> ThemesOf(Evas_Object* window) {
    std::set<std::string> themes;
    VisitAllVisible(window, [&](Evas_Object* object) {
        if (const Source source = SourceOf(object); !source.group.empty()) {
            themes.insert(source.file);
        }
    });
    return themes;
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

}  // namespace applist::test
