// Copyright (c) 2026 the applist authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Evas.h>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

namespace applist::test {

/// A rectangle of the screen, in pixels.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int Right() const { return x + width; }
    int Bottom() const { return y + height; }
    bool Contains(const Box& other) const;
    bool operator==(const Box&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Box& box);

/// Opaque or transparent pixels, 0xAARRGGBB, colours multiplied by their opacity.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;

    uint32_t At(int x, int y) const {
        return pixels[static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x)];
    }
    /// The part of it in the box, which must lie inside.
    Picture Cut(const Box& box) const;
    /// The smallest box around every pixel that is not wholly transparent.
    Box Painted() const;
};

/// What the window shows now.
Picture Draw(Evas_Object* window);
/// Writes and reads PNG files with the toolkit's own code; window lends its canvas. False, or a
/// picture without pixels, where the file cannot be written or read.
bool SavePng(Evas_Object* window, const Picture& picture, const std::filesystem::path& file);
Picture LoadPng(Evas_Object* window, const std::filesystem::path& file);

/// The visible objects on the window's canvas that draw this group of the theme, from top to
/// bottom of the screen.
std::vector<Evas_Object*> ObjectsOf(Evas_Object* window, const std::string& group);
/// Where an object, and a part of it, stands.
Box BoxOf(const Evas_Object* object);
Box BoxOf(const Evas_Object* object, const char* part);
/// Where the letters of a text part stand: a part may be larger than its text.
Box TextBoxOf(const Evas_Object* object, const char* part);
/// What a text part draws, cut or not.
std::string TextOf(const Evas_Object* object, const char* part);
/// The state that a part is in or on its way to.
std::string StateOf(const Evas_Object* object, const char* part);

/// The contrast ratio of two opaque colours as WCAG 2 defines it, 1 to 21.
double Contrast(uint32_t one, uint32_t other);

}  // namespace applist::test
