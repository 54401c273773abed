// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// A colour in sRGB; each component from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static constexpr Color black() { return {0, 0, 0, 1}; }
    static constexpr Color gray() { return {0.5, 0.5, 0.5, 1}; }

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace VexmoraSDK::platform
