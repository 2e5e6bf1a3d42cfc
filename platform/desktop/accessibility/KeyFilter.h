// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace applist::desktop {

/// The toolkit's bridge to screen readers asks the reader about every key, and then throws the key
/// away whatever the answer is: with a reader on, no key would do anything. This program therefore
/// puts a function of its own in the place of the toolkit's ecore_event_filter_add(). From this
/// call on, filters that are added get to see every event, but none can take it away.
void KeepFilteredEvents();

/// True iff a filter was added since then: the bridge does so once it is connected.
bool FilterWasAdded();

}  // namespace applist::desktop
