#include "VexmoraSDK/platform/images/Image.h"

#include <gmock/gmock.h>

#include <QtCore/QBuffer>
#include <QtCore/QDebug>
#include <QtGui/QColor>
#include <array>
#include <vector>

#include "VexmoraSDK/platform/qt/QtImage.h"

using VexmoraSDK::platform::Image;

namespace {

/// Red above, blue below.
QImage twoColors(int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::red);
    for (int y = height / 2; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixelColor(x, y, Qt::blue);
    }
    return image;
}

QByteArray encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes;
}

std::shared_ptr<const Image> decoded(const QByteArray& bytes) {
    const auto* begin = reinterpret_cast<const std::byte*>(bytes.data());
    return Image::fromData({begin, begin + bytes.size()});
}

/// What the bytes show: the size and the colours in the middle of the four quarters, row by row:
/// "r" for red, "b" for blue, "." for what is seen through, "?" for anything else.
std::string shown(const QByteArray& bytes) {
    const auto image = decoded(bytes);
    if (!image) return "nothing";
    const auto colorAt = [picture = VexmoraSDK::platform::qtImage(image)](int right, int below) {
        const QColor color = picture.pixelColor(picture.width() * (1 + 2 * right) / 4,
                                                picture.height() * (1 + 2 * below) / 4);
        const bool dark = color.green() < 40;
        if (color.alpha() == 0) return '.';
        if (dark && color.red() > 215 && color.blue() < 40) return 'r';
        return dark && color.red() < 40 && color.blue() > 215 ? 'b' : '?';
    };
    const auto [width, height] = image->size();
    return std::to_string(int(width)) + "x" + std::to_string(int(height)) + " " + colorAt(0, 0) +
           colorAt(1, 0) + colorAt(0, 1) + colorAt(1, 1);
}

// A GIF of 2 × 2 pixels, red above and blue below.
QByteArray gif() {
    return QByteArray::fromHex(
        "47494638396102000200800000ff00000000ff2c0000000002000200000203041205003b");
}

/// As a camera writes it that was held upright: 90 degrees clockwise to be turned.
QByteArray jpegToBeTurned(const QImage& image) {
    const auto orientation = QByteArray::fromHex(
        "ffe10022 457869660000 4d4d002a00000008 0001 0112 0003 00000001 0006 0000 00000000");
    return encoded(image, "jpeg").insert(2, orientation);
}

/// The same picture in each of the formats of the web.
std::vector<QByteArray> pictures() {
    std::vector<QByteArray> pictures{gif()};
    for (const char* format : {"png", "jpeg", "webp", "bmp"})
        pictures.push_back(encoded(twoColors(40, 30), format));
    return pictures;
}

TEST(ImageTest, DecodesTheFormatsOfTheWebAndNothingThatWasCutShort) {
    for (const auto& bytes : pictures()) {
        EXPECT_THAT(shown(bytes), testing::AnyOf("40x30 rrbb", "2x2 rrbb"));
        // The last bytes of some hold no pixels.
        for (qsizetype missing = 5; missing <= bytes.size(); missing += 7)
            EXPECT_FALSE(decoded(bytes.chopped(missing)))
                << bytes.left(4).toPercentEncoding().toStdString() << " without " << missing;
    }
}

TEST(ImageTest, DecodesWhatIsTransparentTurnedOrStoredFromTheTop) {
    QImage transparent(8, 8, QImage::Format_ARGB32);
    transparent.fill(Qt::transparent);
    transparent.setPixelColor(6, 2, Qt::red);
    EXPECT_EQ(shown(encoded(transparent, "png")), "8x8 .r..");

    EXPECT_EQ(shown(jpegToBeTurned(twoColors(40, 20))), "20x40 brbr");

    auto bmp = encoded(twoColors(40, 30), "bmp");
    const std::int32_t height = -30;
    std::memcpy(bmp.data() + 22, &height, sizeof height);
    EXPECT_EQ(shown(bmp), "40x30 bbrr");
}

TEST(ImageTest, IsAbsentForWhatIsNoPictureOrOneThatNobodyNeeds) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("garbage"), QByteArray("\x89PNG\r\n\x1a\n"), QByteArray("BM"),
          QByteArray("GIF89a"), QByteArray("RIFF\x10\0\0\0WEBP", 12), QByteArray("\xff\xd8\xff"),
          QByteArray(1000, '\0'),
          QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")}) {
        EXPECT_FALSE(decoded(bytes)) << bytes.toPercentEncoding().toStdString();
    }
    for (const char* format : {"ppm", "ico", "tiff", "xpm"})
        EXPECT_FALSE(decoded(encoded(twoColors(40, 30), format))) << format;

    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
    using Lie = std::array<std::int32_t, 2>;
    for (const auto& size : {Lie{0, 30}, Lie{40, 0}, Lie{65536, 65536}, Lie{40, kMost},
                             Lie{40, kLeast}, Lie{kMost, kMost}, Lie{-40, 30}}) {
        auto bmp = encoded(twoColors(40, 30), "bmp");
        std::memcpy(bmp.data() + 18, size.data(), sizeof size);
        EXPECT_FALSE(decoded(bmp)) << size[0] << " x " << size[1];
    }
}

TEST(ImageTest, TakesSixteenMillionPixelsAndNoMore) {
    QImage picture(4000, 4001, QImage::Format_Mono);
    picture.fill(0);
    EXPECT_FALSE(decoded(encoded(picture, "png")));
    EXPECT_FALSE(decoded(encoded(picture, "bmp")));

    // A screen of 41,017 pixels' width and no height; with the picture on it, 539.
    EXPECT_FALSE(
        decoded(QByteArray::fromHex("47494638396139a000000000002c0047190006000202440100")));

    EXPECT_TRUE(decoded(encoded(picture.copy(0, 0, 4000, 4000), "png")));
}

// Of a process in which no picture was decoded yet.

bool decodesAll() {
    static const auto& all = *new auto(pictures());
    return std::ranges::all_of(all, [](auto& bytes) { return decoded(bytes) != nullptr; });
}

TEST(ImageDeathTest, DecodesInExitHandlersOnceItIsPrepared) {
    EXPECT_EXIT(
        {
            Image::prepareDecoding();
            std::atexit([] { std::_Exit(decodesAll() ? 7 : 1); });
            std::exit(decodesAll() ? 0 : 2);
        },
        testing::ExitedWithCode(7), "^$");
}

std::vector<QString> messages;

void hostsHandler(QtMsgType, const QMessageLogContext&, const QString& message) {
    messages.push_back(message);
}

TEST(ImageDeathTest, KeepsWarningsFromTheHostButItsOwn) {
    EXPECT_EXIT(
        {
            qInstallMessageHandler(hostsHandler);
            const auto picture = encoded(twoColors(200, 100), "jpeg");
            qWarning("before");
            decoded(picture.left(picture.size() / 2));
            qWarning("after");
            QImage::fromData(picture.left(picture.size() / 2));
            const bool hostsOwn = messages.size() == 3 && messages[0] == QLatin1String("before") &&
                                  messages[1] == QLatin1String("after");
            std::exit(hostsOwn ? 0 : 1);
        },
        testing::ExitedWithCode(0), "");
}

}  // namespace
