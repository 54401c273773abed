// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/images/Image.h"

#include <gmock/gmock.h>

#include <QtCore/QBuffer>
#include <QtGui/QImageReader>
#include <algorithm>

#include "VexmoraSDK/platform/qt/QtImage.h"
#include "tests/images/SamplePictures.h"

using namespace VexmoraSDK::platform;

namespace {

QImage readByQt(const Data& data) {
    QByteArray bytes(reinterpret_cast<const char*>(data.data()), std::ssize(data));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer);
    reader.setAutoTransform(true);
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// The largest difference between two pictures in any channel of any pixel.
int difference(const QImage& one, const QImage& other) {
    if (one.size() != other.size()) return 256;
    int most = 0;
    for (int y = 0; y < one.height(); ++y) {
        const uchar* a = one.constScanLine(y);
        const uchar* b = other.constScanLine(y);
        for (int i = 0; i < one.width() * 4; ++i)
            most = std::max(most, std::abs(a[i] - b[i]));
    }
    return most;
}

TEST(ImageTest, ShowsPicturesAsQtReadsThem) {
    for (const auto& [name, data] : VexmoraSDK::samplePictures()) {
        const auto image = Image::fromData(data);
        ASSERT_TRUE(image) << name;
        const auto shown = qtImage(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        EXPECT_LE(difference(shown, readByQt(data)), 1) << name;
    }
}

TEST(ImageTest, SharesItsPixelsWithQtAndKeepsThemForIt) {
    auto image = Image::fromData(VexmoraSDK::samplePictures().at("PNG with alpha"));
    const std::weak_ptr<const Image> watched = image;
    const auto* pixels = image->pixels();
    auto shared = qtImage(std::move(image));
    const QImage copy = shared;
    shared = QImage();
    EXPECT_EQ(static_cast<const void*>(copy.constBits()), pixels);
    EXPECT_FALSE(watched.expired());
}

}  // namespace
