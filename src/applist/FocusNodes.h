// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

typedef struct _Eo_Opaque Evas_Object;

namespace applist {

/// Deletes the focus nodes of a genlist that stand for no row any more. The toolkit makes one for
/// each block of rows that it draws, forgets it when the rows are deleted, and goes through all of
/// them with each key: a list that is emptied often would grow slow. Call it before a list is
/// emptied: right after that the toolkit still finds its way by the nodes of rows that are gone.
/// Main thread only.
void DeleteUnusedFocusNodes(Evas_Object* list);

}  // namespace applist
