// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform {

/// A text laid out in lines. Painting uses the measured lines.
class VEXMORA_EXPORT TextLayout {
 public:
    struct Impl;

    /// More lines than any ad needs. Further ones are left out.
    static constexpr int kMaxLines = 100;

    /// Starts to load what texts need, on another thread where that takes long, and returns whether
    /// it is loaded. The first text waits for it otherwise. Main thread, any number of times.
    static bool prepare();

    /// Lays out `text` (UTF-8) in lines of at most `width` points. Wraps at words and breaks words
    /// that are too long; a single letter wider than `width` overflows. To bound the time, only the
    /// first 2,048 UTF-16 units are laid out. Main thread.
    TextLayout(const std::string& text, const Font& font, double width);
    ~TextLayout();

    /// The size of the lines. The width is rounded up, but not beyond the given width, so that the
    /// text has the same lines when laid out in it. An empty text has no width and the height of
    /// one line.
    Size size() const;
    /// Whether the same text, laid out in `width`, has the same lines in the same places.
    bool holdsIn(double width) const;
    /// The backend's lines, for presenters.
    const Impl& impl() const { return *impl_; }

 private:
    std::unique_ptr<const Impl> impl_;
};

}  // namespace VexmoraSDK::platform
