// SPDX-License-Identifier: MIT
#include <QtGui/QFontDatabase>
#include <QtGui/QImage>
#include <QtGui/QPainter>

#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "tests/backend/Backend.h"

namespace VexmoraSDK {

Painting painted(platform::View& view, int width, int height, int scale) {
    Painting painting{width * scale, height * scale, {}};
    painting.pixels.assign(static_cast<std::size_t>(painting.width * painting.height), 0xFFFFFFFF);
    QImage image(reinterpret_cast<uchar*>(painting.pixels.data()), painting.width, painting.height,
                 QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    platform::paintView(painter, view);
    painter.end();
    return painting;
}

void addFont(const std::string& path) {
    QFontDatabase::addApplicationFont(QString::fromStdString(path));
}

void removeAddedFonts() {
    QFontDatabase::removeAllApplicationFonts();
}

}  // namespace VexmoraSDK
