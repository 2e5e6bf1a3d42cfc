// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>

namespace applist::desktop {

/// Gives memory back to the system that was taken for a while: the C library gives back only what
/// is empty at its heap's end. A frame's pixels lie between objects that stay, and to lay out a row
/// the toolkit makes two dozen objects that live for one turn of the loop: after 10,000 rows a
/// third of the heap is empty. Main thread only.
class SpareMemory {
public:
    SpareMemory() : m_unused(Unused()) {}

    /// Does so if more is spare than when it was last done, which costs a few milliseconds: for
    /// when nothing else is to be done. To find out costs a sixth of a microsecond for each free
    /// piece.
    void GiveBack();

private:
    /// In bytes: what the process holds and the allocator has not handed out, and what the process
    /// never got from there. Both stay as they are where nothing is spare.
    static ptrdiff_t Unused();

    ptrdiff_t m_unused;
};

}  // namespace applist::desktop
