// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "toolkit-internals/FrameMemory.h"

#include <cstdlib>
#include <dlfcn.h>
#include <utility>

#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>
#include <sys/mman.h>

namespace applist::desktop {
namespace {

constexpr size_t HUGE_PAGE = 2 << 20;
// A frame with fewer pixels does not fill enough huge pages.
constexpr size_t LARGE_FRAME = 2 * HUGE_PAGE;

bool g_withoutSharedMemory = false;
bool g_awaitsFirstFrame = false;

// Memory for the pixels, which XDestroyImage() frees. Null if there is not enough.
char* HugePages(size_t size) {
    const size_t whole = (size + HUGE_PAGE - 1) / HUGE_PAGE * HUGE_PAGE;
    void* const memory = std::aligned_alloc(HUGE_PAGE, whole);
    if (memory != nullptr) {
        // Without huge pages the kernel provides ordinary ones.
        madvise(memory, whole, MADV_HUGEPAGE);
    }
    return static_cast<char*>(memory);
}

}  // namespace

void SetUpFrameMemory() {
    g_withoutSharedMemory = true;
    g_awaitsFirstFrame = true;
}

}  // namespace applist::desktop

// The functions below replace the library's functions, because the dynamic linker resolves symbols
// from the program first.
extern "C" __attribute__((visibility("default"))) Bool XShmQueryExtension(Display* display) {
    static auto* const replaced =
        reinterpret_cast<decltype(&XShmQueryExtension)>(dlsym(RTLD_NEXT, "XShmQueryExtension"));
    return !applist::desktop::g_withoutSharedMemory && replaced != nullptr ? replaced(display)
                                                                           : False;
}

// The toolkit passes no data and allocates the pixels only if the image does not have any.
extern "C" __attribute__((visibility("default"))) XImage* XCreateImage(
    Display* display, Visual* visual, unsigned int depth, int format, int offset, char* data,
    unsigned int width, unsigned int height, int pad, int bytesPerLine) {
    using namespace applist::desktop;
    static auto* const replaced =
        reinterpret_cast<decltype(&XCreateImage)>(dlsym(RTLD_NEXT, "XCreateImage"));
    XImage* const image =
        replaced(display, visual, depth, format, offset, data, width, height, pad, bytesPerLine);
    const size_t size = image != nullptr ? static_cast<size_t>(image->bytes_per_line) * height : 0;
    if (data == nullptr && size >= LARGE_FRAME && std::exchange(g_awaitsFirstFrame, false)) {
        image->data = HugePages(size);
    }
    return image;
}
