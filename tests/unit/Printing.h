#pragma once

#include <ostream>

#include "VexmoraSDK/platform/Geometry.h"

// How failed expectations show geometry.
namespace VexmoraSDK::platform {

inline void PrintTo(const Point& point, std::ostream* out) {
    *out << '(' << point.x << ", " << point.y << ')';
}

inline void PrintTo(const Size& size, std::ostream* out) {
    *out << size.width << " x " << size.height;
}

inline void PrintTo(const Rect& rect, std::ostream* out) {
    PrintTo(rect.size, out);
    *out << " at ";
    PrintTo(rect.origin, out);
}

}  // namespace VexmoraSDK::platform
