// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "fakes/FakeListFocus.h"

namespace applist::test {

std::vector<std::pair<Evas_Object*, Elm_Object_Item*>>& FocusedRows() {
    static std::vector<std::pair<Evas_Object*, Elm_Object_Item*>> rows;
    return rows;
}

}  // namespace applist::test

extern "C" void list_focus_set(Evas_Object* list, Elm_Object_Item* row) {
    applist::test::FocusedRows().emplace_back(list, row);
}
