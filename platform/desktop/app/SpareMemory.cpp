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

// In pages. A list of some hundred rows stays below.
size_t Much() {
    return (2U << 20) / static_cast<size_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

size_t SpareMemory::Held() {
    std::array<char, 64> text{};
    const int file = open("/proc/self/statm", O_RDONLY | O_CLOEXEC);
    if (file < 0) {
        return 0;
    }
    const bool known = read(file, text.data(), text.size() - 1) > 0;
    close(file);
    // Behind what is mapped.
    char* held = text.data();
    static_cast<void>(std::strtoul(held, &held, 10));
    return known ? std::strtoul(held, nullptr, 10) : 0;
}

void SpareMemory::GiveBack() {
    const bool grown = Held() >= m_held + Much();
    if (grown || m_again) {
        malloc_trim(0);
        m_held = Held();
    }
    m_again = grown;
}

}  // namespace applist::desktop
