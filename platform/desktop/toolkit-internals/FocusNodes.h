// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>

namespace applist::desktop {

/// Deletes the focus nodes of a genlist that do not belong to a row any more.
///
/// The toolkit creates a focus node for each block of rows that it draws, does not delete it with
/// the rows, and walks all of them for each key. Call this before a list is cleared: right
/// afterwards the toolkit still uses the nodes of the deleted rows. Main thread only.
void DeleteUnusedFocusNodes(Evas_Object* list);

}  // namespace applist::desktop
