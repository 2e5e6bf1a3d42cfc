/* Copyright (c) 2026 the applist authors
 * SPDX-License-Identifier: Apache-2.0 */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

typedef struct _Eo_Opaque Evas_Object;
typedef struct _Eo_Opaque Elm_Object_Item;

/* Sets the row of a genlist that should have the keyboard focus. The program calls this after each
 * change of the rows or of the selection, in addition to the toolkit's own functions. It passes
 * null before it fills the list for the first time and before it clears the list.
 *
 * From the next frame on, the row has the focus and is completely visible. This stays so until
 * another row is set, the viewer moves the focus or the row is deleted. The genlist emits
 * "item,focused" for moves by the viewer and by the program, but not for moves that the platform
 * makes later because of this call. If the platform's toolkit behaves like this without help, the
 * function may be empty. Main thread only. */
void list_focus_set(Evas_Object* list, Elm_Object_Item* row);

#ifdef __cplusplus
}
#endif
