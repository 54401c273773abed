// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/ui/View.h"

// Test helpers that each backend implements. The linker chooses the backend.
namespace VexmoraSDK {

/// 0xAARRGGBB
using Pixel = std::uint32_t;

/// A box of pixels; `right` and `bottom` are just outside.
struct Box {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    int width() const { return right - left; }
    int height() const { return bottom - top; }
    platform::Point center() const { return {(left + right) / 2.0, (top + bottom) / 2.0}; }
    bool contains(const Box& box) const {
        return left <= box.left && top <= box.top && box.right <= right && box.bottom <= bottom;
    }
    friend bool operator==(const Box&, const Box&) = default;
};

struct Painting {
    int width;
    int height;
    std::vector<Pixel> pixels;

    Pixel at(int x, int y) const { return pixels[static_cast<std::size_t>(y * width + x)]; }

    /// The smallest box that contains all pixels that are not white.
    Box ink() const {
        Box box{width, height, 0, 0};
        for (int y = 0; y < height; ++y) {
            for (int x = 0; x < width; ++x) {
                if (at(x, y) == 0xFFFFFFFF) continue;
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
                       std::max(box.bottom, y + 1)};
            }
        }
        return box.right > 0 ? box : Box();
    }
};

/// Paints the tree on white: `width` × `height` points, `scale` pixels per point.
Painting painted(platform::View& view, int width, int height, int scale);

/// Adds the font in a file to the device's fonts, in this process.
void addFont(const std::string& path);
void removeAddedFonts();

}  // namespace VexmoraSDK
