// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Ecore.h>

typedef struct _Efl_Access_Event_Handler Efl_Access_Event_Handler;

namespace applist::desktop {

/// Connects the toolkit to the screen reader and gives what it leaves nameless a name: a list that
/// of its popup, a row its text. The toolkit knows the texts only of rows that are drawn; a reader
/// goes through all of them. Main thread only; lives while the toolkit does.
class SpokenNames {
public:
    SpokenNames() = default;
    ~SpokenNames() { Turn(false); }
    SpokenNames(const SpokenNames&) = delete;
    SpokenNames& operator=(const SpokenNames&) = delete;
    SpokenNames(SpokenNames&&) = delete;
    SpokenNames& operator=(SpokenNames&&) = delete;

    /// Switches it on, for everything that is there and that is still to come, or off. It is off at
    /// first, and then costs nothing.
    void Turn(bool on);
    /// Something has become part of list.
    static void RowAdded(Eo* list, Eo* row);
    /// Connects again where the toolkit gave up; true iff it has to be looked at once more.
    bool Retry();

private:
    void Connect();

    Ecore_Timer* m_retry = nullptr;
    Efl_Access_Event_Handler* m_additions = nullptr;
};

}  // namespace applist::desktop
