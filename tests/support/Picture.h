// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

namespace applist::test {

/// A rectangle of the screen in pixels. Right and bottom are exclusive.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
    int CentreX() const { return x + width / 2; }
    int CentreY() const { return y + height / 2; }
    bool Contains(const Box& other) const;
    bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

/// Pixels, row by row from the top: 0xRRGGBB of a screen; of a window 0xAARRGGBB, with colours
/// multiplied by their opacity.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t At(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
    /// Returns the part in the box, which must lie inside the picture.
    Picture Cut(const Box& box) const;
    /// The smallest box around all pixels of a window that are not fully transparent.
    Box Painted() const;
    bool operator==(const Picture&) const = default;
};

/// The smallest box around all pixels that differ between two pictures of the same size.
Box Difference(const Picture& before, const Picture& after);
/// The smallest box around all pixels of the colour.
Box AreaOf(const Picture& picture, uint32_t colour);

/// The contrast ratio of two opaque colours as WCAG 2 defines it, 1 to 21.
double Contrast(uint32_t one, uint32_t other);

}  // namespace applist::test
