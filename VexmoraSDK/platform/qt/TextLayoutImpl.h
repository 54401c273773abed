// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtGui/QTextLayout>
#include <optional>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/TextLayout.h"

namespace VexmoraSDK::platform {

/// The lines of a `TextLayout`. Main thread.
struct TextLayout::Impl {
 public:
    Impl(const std::string& text, const Font& font, double width);

    Size size() const { return size_; }
    bool holdsIn(double width) const;
    /// The lines, for painting. They refer to fonts that end with the application; under a new
    /// application the text is laid out again.
    const QTextLayout& lines() const;

 private:
    void layOut() const;
    /// Lays out the lines in `width`. Returns the start of each line and the end of the last.
    std::vector<int> breakLines(double width) const;
    bool isOneLineIn(double width) const;

    const QString text_;
    const Font font_;
    const double askedWidth_;
    const bool rightToLeft_;
    mutable std::optional<QTextLayout> layout_;
    mutable Size size_;
    /// Ends the connection to the application if the layout is destroyed first.
    mutable QObject context_;
};

}  // namespace VexmoraSDK::platform
