#pragma once

#include <QtGui/QImage>

#include "VexmoraSDK/platform/images/Image.h"

namespace VexmoraSDK::platform {

struct Image::Impl {
    QImage image;

    /// `image` with fewer pixels, kept when it is painted a second time like that: who repaints
    /// once is likely to do it again. Main thread.
    mutable QImage reduced{};
    mutable QSize reducedBefore{};
};

}  // namespace VexmoraSDK::platform
