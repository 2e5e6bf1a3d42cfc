// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/FocusNodes.h"

#include <Elementary.h>
#include <set>
#include <string_view>
#include <vector>

// A private header of the toolkit, with a type that it needs. Only this interface names the focus
// node of a row.
extern "C" {
typedef Eo Efl_Ui_Focus_Manager;
#include <efl_ui_focus_object.eo.h>
}

namespace applist::desktop {
namespace {

// By name: the toolkit does not export the class.
bool IsNode(const Eo* object) {
    return efl_class_name_get(object) == std::string_view("Efl.Ui.Focus.Composition_Adapter");
}

std::vector<Eo*> FocusNodes(Evas_Object* list) {
    std::vector<Eo*> nodes;
    Eina_Iterator* children = efl_children_iterator_new(list);
    for (void* child = nullptr; eina_iterator_next(children, &child) != EINA_FALSE;) {
        if (IsNode(static_cast<Eo*>(child))) {
            nodes.push_back(static_cast<Eo*>(child));
        }
    }
    eina_iterator_free(children);
    return nodes;
}

std::set<const Eo*> UsedFocusNodes(const Evas_Object* list) {
    std::set<const Eo*> nodes;
    for (const Elm_Object_Item* row = elm_genlist_first_item_get(list); row != nullptr;
         row = elm_genlist_item_next_get(row)) {
        nodes.insert(efl_ui_focus_object_focus_parent_get(row));
    }
    return nodes;
}

}  // namespace

void DeleteUnusedFocusNodes(Evas_Object* list) {
    const std::set<const Eo*> used = UsedFocusNodes(list);
    for (Eo* node : FocusNodes(list)) {
        if (!used.contains(node)) {
            efl_del(node);
        }
    }
}

}  // namespace applist::desktop
