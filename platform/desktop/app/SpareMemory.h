// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace applist::desktop {

/// Gives memory back to the system that was taken for a while. To lay out a row the toolkit makes
/// two dozen objects that live for one turn of the loop, between others that stay: after 10,000
/// rows a third of the heap is empty, and the C library gives back only what is empty at its end.
/// Main thread only.
class SpareMemory {
public:
    SpareMemory();

    /// Does so if the program holds much more than when it was last done, which costs a few
    /// milliseconds: for when nothing else is to be done. Costs next to nothing otherwise.
    void GiveBack();

private:
    void Note();

    /// When it was last done: pages that had come in, and pages held. Or when it was last found not
    /// worth it, for the first.
    long m_faults = 0;
    size_t m_held = 0;
};

}  // namespace applist::desktop
