/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _Eo_Opaque Evas_Object;
typedef struct _Eo_Opaque Elm_Object_Item;

/* Names the row of a genlist that is to have the keyboard focus. The program calls it after each
 * change of the rows or of the selection, in addition to the toolkit's own calls, and with null
 * while the list has no rows: before the list is filled and before it is cleared.
 *
 * From the next frame on, the row has the focus and is wholly visible. It keeps both until another
 * row is named, the viewer moves the focus or the row is deleted. The genlist raises "item,focused"
 * for moves of the viewer and of the program, not for those that this function makes later. A
 * toolkit that does all this by itself needs nothing here. Main thread only. */
void list_focus_set(Evas_Object* list, Elm_Object_Item* row);

#ifdef __cplusplus
}
#endif
