// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/FrameDrawing.h"

#include <Ecore_Evas.h>
#include <cstdlib>
#include <dlfcn.h>
#include <string_view>
#include <utility>

#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <sys/mman.h>

// A private header of the toolkit: evas_object_smart_smart_get() does not know the groups that
// widgets of this release consist of.
extern "C" {
#include <canvas/efl_canvas_group.eo.h>
}

namespace applist::desktop {
namespace {

constexpr size_t HUGE_PAGE = 2 << 20;
// A frame with fewer pixels does not fill enough huge pages.
constexpr size_t LARGE_FRAME = 2 * HUGE_PAGE;

bool g_withoutSharedMemory = false;
bool g_awaitsFirstFrame = false;

// Memory for the pixels, which XDestroyImage() frees. Null if there is not enough.
char* HugePages(size_t size) {
    const size_t whole = (size + HUGE_PAGE - 1) / HUGE_PAGE * HUGE_PAGE;
    void* const memory = std::aligned_alloc(HUGE_PAGE, whole);
    if (memory != nullptr) {
        // Without huge pages the kernel provides ordinary ones.
        madvise(memory, whole, MADV_HUGEPAGE);
    }
    return static_cast<char*>(memory);
}

}  // namespace

void SetUpFrameMemory() {
    g_withoutSharedMemory = true;
    g_awaitsFirstFrame = true;
}

}  // namespace applist::desktop

// The functions below replace the library's functions, because the dynamic linker resolves symbols
// from the program first.
extern "C" __attribute__((visibility("default"))) Bool XShmQueryExtension(Display* display) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XShmQueryExtension)>(dlsym(RTLD_NEXT, "XShmQueryExtension"));
    return !applist::desktop::g_withoutSharedMemory && replaced != nullptr ? replaced(display)
                                                                           : False;
}

// The toolkit passes no data and allocates the pixels only if the image does not have any.
extern "C" __attribute__((visibility("default"))) XImage* XCreateImage(
    Display* display, Visual* visual, unsigned int depth, int format, int offset, char* data,
    unsigned int width, unsigned int height, int pad, int bytesPerLine) {
    using namespace applist::desktop;
    static auto* const replaced =
        reinterpret_cast<decltype(&XCreateImage)>(dlsym(RTLD_NEXT, "XCreateImage"));
    XImage* const image =
        replaced(display, visual, depth, format, offset, data, width, height, pad, bytesPerLine);
    const size_t size = image != nullptr ? static_cast<size_t>(image->bytes_per_line) * height : 0;
    if (data == nullptr && size >= LARGE_FRAME && std::exchange(g_awaitsFirstFrame, false)) {
        image->data = HugePages(size);
    }
    return image;
}

namespace applist::desktop {
namespace {

constexpr Eina_Rectangle NOTHING{0, 0, 0, 0};

Eina_Rectangle GeometryOf(const Evas_Object* object) {
    Eina_Rectangle area{};
    evas_object_geometry_get(object, &area.x, &area.y, &area.w, &area.h);
    return area;
}

bool IsHidden(const Evas_Object* object) {
    int alpha = 0;
    evas_object_color_get(object, nullptr, nullptr, nullptr, &alpha);
    return alpha == 0 || evas_object_visible_get(object) == EINA_FALSE;
}

// Returns the part of the object that its clippers leave.
Eina_Rectangle ClippedAreaOf(const Evas_Object* object) {
    Eina_Rectangle area = GeometryOf(object);
    for (const Evas_Object* clip = evas_object_clip_get(object); clip != nullptr;
         clip = evas_object_clip_get(clip)) {
        const Eina_Rectangle room = GeometryOf(clip);
        if (IsHidden(clip) || eina_rectangle_intersection(&area, &room) == EINA_FALSE) {
            return NOTHING;
        }
    }
    return area;
}

void Add(Eina_Rectangle& area, const Evas_Object* object);

void AddMembers(Eina_Rectangle& area, const Evas_Object* group) {
    Eina_List* members = evas_object_smart_members_get(group);
    void* member = nullptr;
    EINA_LIST_FREE(members, member) {
        Add(area, static_cast<Evas_Object*>(member));
    }
}

// Groups and clippers are not drawn themselves.
void Add(Eina_Rectangle& area, const Evas_Object* object) {
    if (efl_isa(object, EFL_CANVAS_GROUP_CLASS) != EINA_FALSE) {
        AddMembers(area, object);
    } else if (!IsHidden(object) && evas_object_clipees_has(object) == EINA_FALSE) {
        const Eina_Rectangle added = ClippedAreaOf(object);
        if (eina_rectangle_is_empty(&area) != EINA_FALSE) {
            area = added;
        } else if (eina_rectangle_is_empty(&added) == EINA_FALSE) {
            eina_rectangle_union(&area, &added);
        }
    }
}

Eina_Rectangle VisibleArea(const Evas* canvas) {
    Eina_Rectangle area = NOTHING;
    for (const Evas_Object* object = evas_object_bottom_get(canvas); object != nullptr;
         object = evas_object_above_get(object)) {
        Add(area, object);
    }
    return area;
}

void ExcludeAllBut(const Eina_Rectangle& area, Evas* canvas) {
    int width = 0;
    int height = 0;
    evas_output_size_get(canvas, &width, &height);
    const int right = area.x + area.w;
    const int bottom = area.y + area.h;
    evas_obscured_rectangle_add(canvas, 0, 0, width, area.y);
    evas_obscured_rectangle_add(canvas, 0, bottom, width, height - bottom);
    evas_obscured_rectangle_add(canvas, 0, area.y, area.x, area.h);
    evas_obscured_rectangle_add(canvas, right, area.y, width - right, area.h);
}

void OnDrawn(void*, Evas* canvas, void*) {
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_POST, OnDrawn);
    evas_obscured_clear(canvas);
}

// The server never shows the pixels outside of a window's shape, which is empty at first. Of a
// window with an alpha channel it would show arbitrary ones.
bool IsShaped(const Evas* canvas) {
    return ecore_evas_shaped_get(ecore_evas_ecore_evas_get(canvas)) != EINA_FALSE;
}

void OnBeforeDrawing(void*, Evas* canvas, void*) {
    const Eina_Rectangle area = VisibleArea(canvas);
    if (eina_rectangle_is_empty(&area) != EINA_FALSE || !IsShaped(canvas)) {
        return;
    }
    evas_event_callback_del(canvas, EVAS_CALLBACK_RENDER_PRE, OnBeforeDrawing);
    // After a change of the window's size the toolkit draws all of it, also excluded areas, unless
    // it has handled the change. Afterwards it considers the objects drawn.
    evas_norender(canvas);
    evas_damage_rectangle_add(canvas, area.x, area.y, area.w, area.h);
    ExcludeAllBut(area, canvas);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_POST, OnDrawn, nullptr);
}

}  // namespace

void LimitFirstFrame(const Evas_Object* object) {
    Evas* const canvas = evas_object_evas_get(object);
    const char* engine = ecore_evas_engine_name_get(ecore_evas_ecore_evas_get(canvas));
    if (std::string_view(engine) == "software_x11") {
        // Called last, after handlers that still change the frame.
        evas_event_callback_priority_add(canvas, EVAS_CALLBACK_RENDER_PRE,
                                         EVAS_CALLBACK_PRIORITY_AFTER, OnBeforeDrawing, nullptr);
    }
}

}  // namespace applist::desktop
