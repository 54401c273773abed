// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/qt/QtImage.h"

#include <utility>

namespace VexmoraSDK::platform {

using Held = std::shared_ptr<const Image>;

QImage qtImage(Held image) {
    const auto format =
        image->isOpaque() ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    const auto* pixels = reinterpret_cast<const uchar*>(image->pixels());
    const int width = image->width();
    const int height = image->height();
    const int bytesPerRow = image->bytesPerRow();
    const auto release = [](void* held) { delete static_cast<Held*>(held); };
    return QImage(pixels, width, height, bytesPerRow, format, release, new Held(std::move(image)));
}

}  // namespace VexmoraSDK::platform
