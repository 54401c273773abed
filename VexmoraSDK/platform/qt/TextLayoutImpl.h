#pragma once

#include <QtGui/QTextLayout>

#include "VexmoraSDK/platform/TextLayout.h"

namespace VexmoraSDK::platform {

struct TextLayout::Impl {
    QTextLayout layout;
    Size size;

    Impl(const std::string& text, const Font& font, double width);
};

}  // namespace VexmoraSDK::platform
