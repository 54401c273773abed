#pragma once

#include <QtGui/QTextLayout>
#include <vector>

#include "VexmoraSDK/platform/TextLayout.h"

namespace VexmoraSDK::platform {

struct TextLayout::Impl {
    QTextLayout layout;
    Size size;
    const double askedWidth;
    const bool rightToLeft;

    Impl(const std::string& text, const Font& font, double width);

 private:
    /// Lays the lines out in that width and tells where they begin.
    std::vector<int> breakLines(double width);
    bool isOneLineIn(double width);
};

}  // namespace VexmoraSDK::platform
