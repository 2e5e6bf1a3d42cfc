// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "ui/presentation/ToolkitCalls.h"

#include <Elementary.h>
#include <algorithm>
#include <map>
#include <set>
#include <sstream>

#include "applist/AppListItem.h"

namespace applist::test {
namespace {

std::map<const void*, std::string>& Names() {
    static std::map<const void*, std::string> names{{nullptr, "null"}};
    return names;
}

std::set<std::string>& Failing() {
    static std::set<std::string> failing;
    return failing;
}

std::string Text(const char* text) {
    return text != nullptr ? "\"" + std::string(text) + "\"" : "null";
}
std::string Text(const void* object) {
    const auto known = Names().find(object);
    return known != Names().end() ? known->second : "?";
}
std::string Text(Eina_Bool flag) {
    return flag != EINA_FALSE ? "true" : "false";
}
template <typename Number>
requires std::is_arithmetic_v<Number> || std::is_enum_v<Number> std::string Text(Number number) {
    std::ostringstream out;
    out << number;
    return out.str();
}

bool g_inPlatform = false;

template <typename... Arguments>
void Note(const std::string& function, Arguments... arguments) {
    if (g_inPlatform) {
        return;
    }
    std::string list;
    ((list += (list.empty() ? "" : ", ") + Text(arguments)), ...);
    ToolkitCalls().push_back(function + "(" + list + ")");
}

// A new object may get the address of a deleted one, so the newest name replaces the old one.
template <typename Object>
Object* Named(Object* object, const std::string& name) {
    if (object != nullptr) {
        Names()[object] = name;
    }
    return object;
}

std::string RowName(const void* item) {
    return "row " + static_cast<AppListItem*>(const_cast<void*>(item))->GetUnigueId();
}

}  // namespace

std::vector<std::string>& ToolkitCalls() {
    static std::vector<std::string> calls;
    return calls;
}

std::vector<std::string> ToolkitCallsOf(const std::vector<std::string>& functions) {
    std::vector<std::string> result;
    for (const std::string& call : ToolkitCalls()) {
        const std::string function = call.substr(0, call.find('('));
        if (std::find(functions.begin(), functions.end(), function) != functions.end()) {
            result.push_back(call);
        }
    }
    return result;
}

void FailNext(const std::string& function) {
    Failing().insert(function);
}

}  // namespace applist::test

using namespace applist::test;

// The linker sends the program's calls of NAME to __wrap_NAME, and __real_NAME to the toolkit.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,bugprone-macro-parentheses)
#define RECORD(name, parameters, arguments, ...) \
    extern "C" void __real_##name parameters;    \
    extern "C" void __wrap_##name parameters;    \
    extern "C" void __wrap_##name parameters {   \
        Note(#name __VA_OPT__(, ) __VA_ARGS__);  \
        __real_##name arguments;                 \
    }
#define RECORD_MAKER(objectName, name, parameters, arguments, ...) \
    extern "C" Evas_Object* __real_##name parameters;              \
    extern "C" Evas_Object* __wrap_##name parameters;              \
    extern "C" Evas_Object* __wrap_##name parameters {             \
        Note(#name, __VA_ARGS__);                                  \
        if (Failing().erase(#name) > 0) {                          \
            return nullptr;                                        \
        }                                                          \
        return Named(__real_##name arguments, objectName);         \
    }

RECORD(elm_config_focus_highlight_animate_set, (Eina_Bool on), (on), on)
RECORD_MAKER("window", elm_win_add, (Evas_Object * parent, const char* name, Elm_Win_Type type),
             (parent, name, type), static_cast<void*>(parent), name, type)
RECORD(elm_win_title_set, (Evas_Object * o, const char* text), (o, text), static_cast<void*>(o),
       text)
RECORD(elm_win_alpha_set, (Evas_Object * o, Eina_Bool on), (o, on), static_cast<void*>(o), on)
RECORD(elm_win_prop_focus_skip_set, (Evas_Object * o, Eina_Bool on), (o, on), static_cast<void*>(o),
       on)
RECORD(elm_win_focus_highlight_enabled_set, (Evas_Object * o, Eina_Bool on), (o, on),
       static_cast<void*>(o), on)
RECORD(elm_win_fullscreen_set, (Evas_Object * o, Eina_Bool on), (o, on), static_cast<void*>(o), on)
RECORD(elm_win_resize_object_add, (Evas_Object * o, Evas_Object* sub), (o, sub),
       static_cast<void*>(o), static_cast<void*>(sub))
RECORD_MAKER("background", elm_bg_add, (Evas_Object * parent), (parent), static_cast<void*>(parent))
RECORD(evas_object_color_set, (Evas_Object * o, int r, int g, int b, int a), (o, r, g, b, a),
       static_cast<void*>(o), r, g, b, a)
RECORD(evas_object_size_hint_weight_set, (Evas_Object * o, double x, double y), (o, x, y),
       static_cast<void*>(o), x, y)
RECORD(evas_object_size_hint_align_set, (Evas_Object * o, double x, double y), (o, x, y),
       static_cast<void*>(o), x, y)
RECORD(evas_object_size_hint_min_set, (Evas_Object * o, int w, int h), (o, w, h),
       static_cast<void*>(o), w, h)
RECORD(evas_object_show, (Evas_Object * o), (o), static_cast<void*>(o))
RECORD(evas_object_move, (Evas_Object * o, int x, int y), (o, x, y), static_cast<void*>(o), x, y)
RECORD(evas_object_resize, (Evas_Object * o, int w, int h), (o, w, h), static_cast<void*>(o), w, h)
RECORD(evas_object_del, (Evas_Object * o), (o), static_cast<void*>(o))
RECORD_MAKER("popup", elm_popup_add, (Evas_Object * parent), (parent), static_cast<void*>(parent))
RECORD(elm_object_part_text_set, (Evas_Object * o, const char* part, const char* text),
       (o, part, text), static_cast<void*>(o), part, text)
RECORD(elm_object_part_content_set, (Evas_Object * o, const char* part, Evas_Object* content),
       (o, part, content), static_cast<void*>(o), part, static_cast<void*>(content))
RECORD_MAKER("genlist", elm_genlist_add, (Evas_Object * parent), (parent),
             static_cast<void*>(parent))
RECORD(elm_object_scroll_item_loop_enabled_set, (Evas_Object * o, Eina_Bool on), (o, on),
       static_cast<void*>(o), on)
RECORD(evas_object_smart_callback_add,
       (Evas_Object * o, const char* event, Evas_Smart_Cb function, const void* data),
       (o, event, function, data), static_cast<void*>(o), event)
RECORD_MAKER("table", elm_table_add, (Evas_Object * parent), (parent), static_cast<void*>(parent))
RECORD_MAKER("rectangle", evas_object_rectangle_add, (Evas * canvas), (canvas),
             static_cast<void*>(canvas))
RECORD(elm_table_pack, (Evas_Object * o, Evas_Object* sub, int x, int y, int w, int h),
       (o, sub, x, y, w, h), static_cast<void*>(o), static_cast<void*>(sub), x, y, w, h)
RECORD(elm_genlist_item_class_free, (Elm_Genlist_Item_Class * itemClass), (itemClass),
       static_cast<void*>(itemClass))
RECORD(edje_object_message_send_to_winset, (Evas_Object * o, int message), (o, message),
       static_cast<void*>(o), message)
RECORD_MAKER(RowName(data), elm_genlist_item_append,
             (Evas_Object * o, const Elm_Genlist_Item_Class* itemClass, const void* data,
              Evas_Object* parent, Elm_Genlist_Item_Type type, Evas_Smart_Cb function,
              const void* functionData),
             (o, itemClass, data, parent, type, function, functionData),
             static_cast<const void*>(itemClass), RowName(data).c_str(), static_cast<void*>(parent),
             type)
RECORD_MAKER(RowName(data), elm_genlist_item_insert_after,
             (Evas_Object * o, const Elm_Genlist_Item_Class* itemClass, const void* data,
              Evas_Object* parent, Evas_Object* other, Elm_Genlist_Item_Type type,
              Evas_Smart_Cb function, const void* functionData),
             (o, itemClass, data, parent, other, type, function, functionData),
             static_cast<const void*>(itemClass), RowName(data).c_str(), static_cast<void*>(parent),
             static_cast<void*>(other), type)
RECORD_MAKER(RowName(data), elm_genlist_item_insert_before,
             (Evas_Object * o, const Elm_Genlist_Item_Class* itemClass, const void* data,
              Evas_Object* parent, Evas_Object* other, Elm_Genlist_Item_Type type,
              Evas_Smart_Cb function, const void* functionData),
             (o, itemClass, data, parent, other, type, function, functionData),
             static_cast<const void*>(itemClass), RowName(data).c_str(), static_cast<void*>(parent),
             static_cast<void*>(other), type)
RECORD(elm_genlist_clear, (Evas_Object * o), (o), static_cast<void*>(o))
RECORD(elm_object_item_del, (Elm_Object_Item * row), (row), static_cast<void*>(row))
RECORD(elm_genlist_item_bring_in, (Elm_Object_Item * row, Elm_Genlist_Item_Scrollto_Type type),
       (row, type), static_cast<void*>(row), type)
RECORD(elm_object_item_focus_set, (Elm_Object_Item * row, Eina_Bool on), (row, on),
       static_cast<void*>(row), on)

extern "C" Elm_Genlist_Item_Class* __real_elm_genlist_item_class_new();
extern "C" Elm_Genlist_Item_Class* __wrap_elm_genlist_item_class_new();
extern "C" Elm_Genlist_Item_Class* __wrap_elm_genlist_item_class_new() {
    Note("elm_genlist_item_class_new");
    if (Failing().erase("elm_genlist_item_class_new") > 0) {
        return nullptr;
    }
    return Named(__real_elm_genlist_item_class_new(), "class");
}

extern "C" double __real_elm_config_scale_get();
extern "C" double __wrap_elm_config_scale_get();
extern "C" double __wrap_elm_config_scale_get() {
    Note("elm_config_scale_get");
    return __real_elm_config_scale_get();
}

RECORD(elm_object_focus_allow_set, (Evas_Object * o, Eina_Bool on), (o, on), static_cast<void*>(o),
       on)

// Calls that the platform makes to the toolkit are not recorded.
extern "C" void __real_list_focus_set(Evas_Object* list, Elm_Object_Item* row);
extern "C" void __wrap_list_focus_set(Evas_Object* list, Elm_Object_Item* row);
extern "C" void __wrap_list_focus_set(Evas_Object* list, Elm_Object_Item* row) {
    g_inPlatform = true;
    __real_list_focus_set(list, row);
    g_inPlatform = false;
}

#define RECORD_STYLE(name)                                                  \
    extern "C" Eina_Bool __real_##name(Evas_Object* o, const char* style);  \
    extern "C" Eina_Bool __wrap_##name(Evas_Object* o, const char* style);  \
    extern "C" Eina_Bool __wrap_##name(Evas_Object* o, const char* style) { \
        Note(#name, static_cast<void*>(o), style);                          \
        return __real_##name(o, style);                                     \
    }
RECORD_STYLE(elm_object_style_set)
RECORD_STYLE(elm_win_focus_highlight_style_set)
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp,bugprone-macro-parentheses)
