// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "VexmoraSDK/platform/TextLayout.h"
#include "VexmoraSDK/platform/cairo/CPointers.h"

namespace VexmoraSDK::platform {

struct TextLayout::Impl {
    struct Line {
        LayoutLinePointer glyphs;
        /// The start of its baseline, from the layout's top left.
        Point baseline;
    };

    LayoutPointer layout;
    std::vector<Line> lines;
    Size size;
    double askedWidth;
    bool rightToLeft;

    Impl(const std::string& text, const Font& font, double width);

 private:
    void placeLines(double lineWidth);
};

}  // namespace VexmoraSDK::platform
