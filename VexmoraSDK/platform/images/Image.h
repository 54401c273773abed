// SPDX-License-Identifier: MIT
#pragma once

#include <any>
#include <cstdint>
#include <memory>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/foundation/Data.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform {

/// A decoded picture. Immutable, so that any thread may hold and read it.
class VEXMORA_EXPORT Image {
 public:
    /// One word a pixel, 0xAARRGGBB in the machine's byte order, colours premultiplied with alpha;
    /// rows from the top without gaps.
    using Pixels = std::unique_ptr<std::uint32_t[]>;

    /// Decodes a picture. Absent for bytes that are none and for one of more than 16 million
    /// pixels, for which no memory is taken. Any thread.
    static std::shared_ptr<const Image> fromData(const Data& data);
    /// The same for bytes that others may hold as well: they get one picture, decoded once, as long
    /// as somebody shows it or it is among the latest. `data` is not null. Any thread.
    static std::shared_ptr<const Image> fromData(const SharedData& data);

    /// A picture of `width` × `height` pixels, both at least 1. `isOpaque` may be said only where
    /// each pixel's alpha is 255.
    Image(int width, int height, Pixels pixels, bool isOpaque);

    /// In pixels.
    int width() const { return width_; }
    int height() const { return height_; }
    /// The natural size in points: one for each pixel.
    Size size() const { return {static_cast<double>(width_), static_cast<double>(height_)}; }

    /// `width() * height()` words in the format of `Pixels`. Valid as long as the picture.
    const std::uint32_t* pixels() const { return pixels_.get(); }
    /// From one row to the next.
    int bytesPerRow() const { return width_ * 4; }
    /// Whether nothing below the picture can be seen through it.
    bool isOpaque() const { return isOpaque_; }

    /// What a painter derives from the picture and keeps as long as it. Main thread only.
    std::any& derivedByPainter() const { return derivedByPainter_; }

 private:
    int width_;
    int height_;
    Pixels pixels_;
    bool isOpaque_;
    mutable std::any derivedByPainter_;
};

}  // namespace VexmoraSDK::platform
