// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// Makes event filters that are added from now on unable to discard events.
///
/// The toolkit's accessibility bridge adds an event filter that sends every key to the screen
/// reader and then discards the key, whatever the reader replies, so that no key would work while a
/// reader is on. The program therefore replaces the toolkit's ecore_event_filter_add() with a
/// version whose filters see every event but always pass it on.
void KeepFilteredEvents();

/// Returns true if a filter has been added since then. The bridge adds its filter once it is
/// connected.
bool FilterWasAdded();

}  // namespace applist::desktop
