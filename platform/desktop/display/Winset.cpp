// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "winset.h"

#include <Edje.h>
#include <Elementary.h>

// A theme with variants handles the number in its "message" script. Other themes ignore it.
extern "C" void edje_object_message_send_to_winset(Evas_Object* widget, int message) {
    Evas_Object* theme = widget != nullptr ? elm_layout_edje_get(widget) : nullptr;
    if (theme != nullptr) {
        Edje_Message_Int number{message};
        edje_object_message_send(theme, EDJE_MESSAGE_INT, message, &number);
    }
}
