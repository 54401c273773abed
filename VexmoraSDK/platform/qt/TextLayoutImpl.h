// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtGui/QTextLayout>
#include <optional>
#include <string>
#include <vector>

#include "VexmoraSDK/platform/TextLayout.h"

namespace VexmoraSDK::platform {

/// Main thread.
struct TextLayout::Impl {
 public:
    Impl(const std::string& text, const Font& font, double width);

    Size size() const { return size_; }
    bool holdsIn(double width) const;
    /// The lines, to be painted. They hold parts of the toolkit's fonts, which end with the
    /// application: under another one the text is laid out anew.
    const QTextLayout& lines() const;

 private:
    void layOut() const;
    /// Lays the lines out in that width and tells where they begin, and where the last one ends.
    std::vector<int> breakLines(double width) const;
    bool isOneLineIn(double width) const;

    const QString text_;
    const Font font_;
    const double askedWidth_;
    const bool rightToLeft_;
    mutable std::optional<QTextLayout> layout_;
    mutable Size size_;
    /// Ends the connection to the application when the layout goes first.
    mutable QObject context_;
};

}  // namespace VexmoraSDK::platform
