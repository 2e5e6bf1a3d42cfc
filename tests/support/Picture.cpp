// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#include "support/Picture.h"

#include <algorithm>
#include <cmath>

namespace applist::test {
namespace {

constexpr uint32_t OPACITY = 0xFF000000;

// The smallest box around all pixels whose index in the picture is wanted.
template <typename Wanted>
Box Bounds(const Picture& picture, Wanted wanted) {
    int left = picture.width;
    int right = 0;
    int top = picture.height;
    int bottom = 0;
    size_t at = 0;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            if (wanted(at++)) {
                left = std::min(left, x);
                right = std::max(right, x + 1);
                top = std::min(top, y);
                bottom = std::max(bottom, y + 1);
            }
        }
    }
    return right > 0 ? Box{left, top, right - left, bottom - top} : Box{};
}

// Converts an sRGB channel to linear light.
double Linear(uint32_t channel) {
    const double value = channel / 255.0;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double Luminance(uint32_t colour) {
    return 0.2126 * Linear(colour >> 16U & 0xFF) + 0.7152 * Linear(colour >> 8U & 0xFF) +
           0.0722 * Linear(colour & 0xFF);
}

}  // namespace

bool Box::Contains(const Box& other) const {
    return other.x >= x && other.y >= y && other.Right() <= Right() && other.Bottom() <= Bottom();
}

std::ostream& operator<<(std::ostream& out, const Box& box) {
    return out << box.width << 'x' << box.height << " at " << box.x << ',' << box.y;
}

Picture Picture::Cut(const Box& box) const {
    Picture part{box.width, box.height, {}};
    for (int y = box.y; y < box.Bottom(); ++y) {
        const auto row = pixels.begin() + static_cast<ptrdiff_t>(y) * width;
        part.pixels.insert(part.pixels.end(), row + box.x, row + box.Right());
    }
    return part;
}

Box Picture::Painted() const {
    return Bounds(*this, [this](size_t at) { return (pixels[at] & OPACITY) != 0; });
}

Box Difference(const Picture& before, const Picture& after) {
    return Bounds(after, [&](size_t at) { return before.pixels[at] != after.pixels[at]; });
}

Box AreaOf(const Picture& picture, uint32_t colour) {
    return Bounds(picture, [&](size_t at) { return picture.pixels[at] == colour; });
}

double Contrast(uint32_t one, uint32_t other) {
    const auto [darker, lighter] = std::minmax({Luminance(one), Luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace applist::test
