/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _Eo_Opaque Evas_Object;

/* Sends a number to the theme object of a widget. The set's theme selects one of its variants by
 * this number; a theme without such variants ignores it. Main thread only. */
void edje_object_message_send_to_winset(Evas_Object* widget, int message);

#ifdef __cplusplus
}
#endif
