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
    SpareMemory() : m_held(Held()) {}

    /// Does so if the program holds much more than when it was last done, which costs a few
    /// milliseconds: for when nothing else is to be done. To find out costs a few microseconds.
    void GiveBack();

private:
    /// In pages; 0 where the kernel does not tell.
    static size_t Held();

    size_t m_held;
    /// What was still in use the last time may be spare now, although nothing has grown since.
    bool m_again = false;
};

}  // namespace applist::desktop
