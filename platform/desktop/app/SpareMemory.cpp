// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "app/SpareMemory.h"

#include <array>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

namespace applist::desktop {
namespace {

// Trims only if at least this much memory is unused; the pixels of two rows are more.
constexpr ptrdiff_t TRIM_THRESHOLD = 128 << 10;

// Returns the resident memory in bytes without file-backed pages, or 0 if the kernel does not
// provide it.
ptrdiff_t Resident() {
    std::array<char, 64> text{};
    const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return 0;
    }
    const bool known = read(file, text.data(), text.size() - 1) > 0;
    close(file);
    // Fields in pages: total size (skipped), resident, file-backed resident.
    char* field = text.data();
    static_cast<void>(std::strtol(field, &field, 10));
    const long all = std::strtol(field, &field, 10);
    const long files = std::strtol(field, &field, 10);
    return known ? (all - files) * sysconf(_SC_PAGESIZE) : 0;
}

}  // namespace

ptrdiff_t SpareMemory::Unused() {
    const struct mallinfo2 heap = mallinfo2();
    return Resident() - static_cast<ptrdiff_t>(heap.uordblks + heap.hblkhd);
}

void SpareMemory::GiveBack() {
    if (Unused() >= m_unused + TRIM_THRESHOLD) {
        malloc_trim(0);
        m_unused = Unused();
    }
}

}  // namespace applist::desktop
