// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <string>

#include "VexmoraSDK/Export.h"
#include "VexmoraSDK/platform/Font.h"
#include "VexmoraSDK/platform/foundation/Geometry.h"

namespace VexmoraSDK::platform {

/// A text laid out in lines. What is measured is what is painted.
class VEXMORA_EXPORT TextLayout {
 public:
    struct Impl;

    /// No ad says more; what comes after that many lines is left out.
    static constexpr int kMaxLines = 100;

    /// Lays `text` (UTF-8) out in lines of at most `width` points: wraps at words, breaks words
    /// that are too long. A letter that is wider than that reaches beyond its line. Of a text too
    /// long for any ad, a beginning of some thousand letters is laid out, so that it takes bounded
    /// time. Main thread.
    TextLayout(const std::string& text, const Font& font, double width);
    ~TextLayout();

    /// What the lines take, the width rounded up so that the text, laid out in just that width,
    /// wraps no further, and never more than the width that was given. An empty text takes no
    /// width and the height of one line.
    Size size() const;
    /// Whether the same text, laid out in `width`, has the same lines in the same places.
    bool holdsIn(double width) const;
    /// The backend's own lines, for presenters.
    const Impl& impl() const { return *impl_; }

 private:
    std::unique_ptr<const Impl> impl_;
};

}  // namespace VexmoraSDK::platform
