// SPDX-License-Identifier: MIT
#pragma once

#include <fontconfig/fontconfig.h>
#include <pango/pango.h>

#include <memory>

namespace VexmoraSDK::platform {

/// Releases an object of a C library with the library's own function.
template <auto release>
struct Releaser {
    template <class T>
    void operator()(T* pointer) const {
        release(pointer);
    }
};

template <class T, auto release>
using CPointer = std::unique_ptr<T, Releaser<release>>;

using FontDescriptionPointer = CPointer<PangoFontDescription, pango_font_description_free>;
using LayoutPointer = CPointer<PangoLayout, g_object_unref>;
using LayoutLinePointer = CPointer<PangoLayoutLine, pango_layout_line_unref>;
using PatternPointer = CPointer<FcPattern, FcPatternDestroy>;
using FontSetPointer = CPointer<FcFontSet, FcFontSetDestroy>;
using ObjectSetPointer = CPointer<FcObjectSet, FcObjectSetDestroy>;

}  // namespace VexmoraSDK::platform
