// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include <cstdint>
#include <memory>

#include <gmock/gmock.h>

#include "support/XDisplay.h"
#include "toolkit-internals/FrameDrawing.h"

// Last, because they define macros with common names.
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>

namespace applist::test {
namespace {

constexpr uintptr_t HUGE_PAGE = 2 << 20;

struct Close {
    void operator()(Display* display) const { XCloseDisplay(display); }
};
struct Destroy {
    void operator()(XImage* image) const { XDestroyImage(image); }
};

/// A client that makes images as the toolkit does: without pixels.
class TheMemoryOfFrames : public testing::Test {
protected:
    std::unique_ptr<XImage, Destroy> Image(unsigned int width, unsigned int height) {
        Visual* visual = DefaultVisual(m_client.get(), DefaultScreen(m_client.get()));
        return std::unique_ptr<XImage, Destroy>(
            XCreateImage(m_client.get(), visual, 24, ZPixmap, 0, nullptr, width, height, 32, 0));
    }

    XDisplay m_screen;
    std::unique_ptr<Display, Close> m_client{XOpenDisplay(m_screen.Name().c_str())};
};

TEST_F(TheMemoryOfFrames, OfTheFirstFrameConsistsOfHugePages) {
    desktop::SetUpFrameMemory();
    const auto image = Image(1920, 1080);
    ASSERT_NE(image->data, nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(image->data) % HUGE_PAGE, 0U);
    // All pixels are usable.
    image->data[0] = 1;
    image->data[image->bytes_per_line * image->height - 1] = 1;
}

TEST_F(TheMemoryOfFrames, OfOtherFramesIsTheToolkits) {
    EXPECT_EQ(Image(1920, 1080)->data, nullptr) << "before the toolkit starts";
    desktop::SetUpFrameMemory();
    EXPECT_EQ(Image(816, 144)->data, nullptr) << "two rows";
    EXPECT_NE(Image(1920, 1080)->data, nullptr) << "the first frame";
    EXPECT_EQ(Image(1920, 1080)->data, nullptr) << "a later frame";
}

TEST_F(TheMemoryOfFrames, IsNotSharedWithTheServer) {
    EXPECT_TRUE(XShmQueryExtension(m_client.get()));
    desktop::SetUpFrameMemory();
    EXPECT_FALSE(XShmQueryExtension(m_client.get()));
}

}  // namespace
}  // namespace applist::test
