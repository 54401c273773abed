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
    /// One 32-bit word per pixel, 0xAARRGGBB in native byte order, premultiplied; rows from the top
    /// without gaps.
    using Pixels = std::unique_ptr<std::uint32_t[]>;

    /// Decodes a picture. Null for bytes that are no picture, and for more than 16 million pixels,
    /// which are not allocated. Any thread.
    static std::shared_ptr<const Image> fromData(const Data& data);
    /// Decodes shared bytes once: later calls with the same `data` return the same picture while it
    /// is in use or among the latest. `data` is not null. Any thread.
    static std::shared_ptr<const Image> fromData(const SharedData& data);

    /// Makes a picture of `width` × `height` pixels, both at least 1. `isOpaque` requires that each
    /// pixel's alpha is 255.
    Image(int width, int height, Pixels pixels, bool isOpaque);

    /// The size in pixels.
    int width() const { return width_; }
    int height() const { return height_; }
    /// The natural size in points: one for each pixel.
    Size size() const { return {static_cast<double>(width_), static_cast<double>(height_)}; }

    /// `width() * height()` words in the format of `Pixels`. Valid as long as the picture.
    const std::uint32_t* pixels() const { return pixels_.get(); }
    /// The distance between rows in bytes.
    int bytesPerRow() const { return width_ * 4; }
    /// Whether all pixels are opaque.
    bool isOpaque() const { return isOpaque_; }

    /// A painter's cached derivative of the picture, which lives as long as it. Main thread only.
    std::any& derivedByPainter() const { return derivedByPainter_; }

 private:
    int width_;
    int height_;
    Pixels pixels_;
    bool isOpaque_;
    mutable std::any derivedByPainter_;
};

}  // namespace VexmoraSDK::platform
