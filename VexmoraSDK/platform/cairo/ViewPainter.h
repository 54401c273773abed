// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

#include "VexmoraSDK/Export.h"

extern "C" {
struct _cairo;
}

namespace VexmoraSDK::platform {

class View;

/// Pixels to paint on: one word a pixel, 0xAARRGGBB in the machine's byte order, colours
/// premultiplied with alpha; rows from the top.
struct PixelBuffer {
    std::uint32_t* pixels;
    int width;
    int height;
    /// From one row to the next, a multiple of 4.
    int bytesPerRow;
};

/// Paints `view`, its origin at the top left, and all that is below it over what the buffer holds,
/// with `scale` pixels to the point. Main thread.
VEXMORA_EXPORT void paintView(const PixelBuffer& buffer, double scale, View& view);

/// Paints `view`, its origin at the context's, and all that is below it. Main thread.
VEXMORA_EXPORT void paintView(_cairo* context, View& view);

}  // namespace VexmoraSDK::platform
