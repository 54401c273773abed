// SPDX-License-Identifier: MIT
#include <fontconfig/fontconfig.h>

#include "VexmoraSDK/platform/cairo/ViewPainter.h"
#include "tests/backend/Backend.h"

namespace VexmoraSDK {

Painting painted(platform::View& view, int width, int height, int scale) {
    Painting painting{width * scale, height * scale, {}};
    painting.pixels.assign(static_cast<std::size_t>(painting.width * painting.height), 0xFFFFFFFF);
    platform::paintView(
        {painting.pixels.data(), painting.width, painting.height, 4 * painting.width}, scale, view);
    return painting;
}

void addFont(const std::string& path) {
    FcConfigAppFontAddFile(nullptr, reinterpret_cast<const FcChar8*>(path.c_str()));
}

void removeAddedFonts() {
    FcConfigAppFontClear(nullptr);
}

}  // namespace VexmoraSDK
