// SPDX-License-Identifier: MIT
#pragma once

namespace VexmoraSDK::platform {

/// A point in layout points; the origin is at the top left and y grows downwards.
struct Point {
    double x = 0;
    double y = 0;
    friend bool operator==(const Point&, const Point&) = default;
};

/// A size in layout points.
struct Size {
    double width = 0;
    double height = 0;
    friend bool operator==(const Size&, const Size&) = default;
};

/// A rectangle in the coordinates of what contains it.
struct Rect {
    Point origin;
    Size size;
    friend bool operator==(const Rect&, const Rect&) = default;
};

/// Distances from the edges, inwards, in layout points.
struct EdgeInsets {
    double top = 0;
    double left = 0;
    double bottom = 0;
    double right = 0;
    friend bool operator==(const EdgeInsets&, const EdgeInsets&) = default;
};

}  // namespace VexmoraSDK::platform
