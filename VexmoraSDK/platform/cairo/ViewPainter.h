// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "VexmoraSDK/Export.h"

extern "C" {
struct _cairo;
}

namespace VexmoraSDK::platform {

class View;

/// A pixel buffer to paint on: one 32-bit word per pixel, 0xAARRGGBB in native byte order,
/// premultiplied; rows from the top.
struct PixelBuffer {
    std::uint32_t* pixels;
    int width;
    int height;
    /// The distance between rows in bytes, a multiple of 4.
    int bytesPerRow;
};

/// Paints `view` and its subviews over the buffer's contents, its origin at the top left, with
/// `scale` pixels per point. Main thread.
VEXMORA_EXPORT void paintView(const PixelBuffer& buffer, double scale, View& view);

/// Paints `view` and its subviews at the context's origin. Main thread.
VEXMORA_EXPORT void paintView(_cairo* context, View& view);

}  // namespace VexmoraSDK::platform
