#pragma once

#include <QtGui/QImage>

#include "VexmoraSDK/platform/Image.h"

namespace VexmoraSDK::platform {

struct Image::Impl {
    QImage image;
};

}  // namespace VexmoraSDK::platform
