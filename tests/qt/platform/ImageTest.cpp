#include "VexmoraSDK/platform/Image.h"

#include <gmock/gmock.h>

#include <QtCore/QBuffer>
#include <QtCore/QDebug>
#include <QtGui/QColor>
#include <array>
#include <thread>
#include <vector>

#include "VexmoraSDK/platform/qt/ImageImpl.h"

using VexmoraSDK::platform::Image;
using VexmoraSDK::platform::Size;

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

/// "r" for red, "b" for blue, "." for what is seen through, "?" for anything else.
char colorAt(const Image& image, int x, int y) {
    const QColor color = image.impl().image.pixelColor(x, y);
    const auto isNear = [&color](QColor other) {
        return std::abs(color.red() - other.red()) < 40 &&
               std::abs(color.green() - other.green()) < 40 &&
               std::abs(color.blue() - other.blue()) < 40;
    };
    if (color.alpha() == 0) return '.';
    return isNear(Qt::red) ? 'r' : isNear(Qt::blue) ? 'b' : '?';
}

/// The colours in the middle of the upper and of the lower half.
std::string halves(const Image& image) {
    const auto& picture = image.impl().image;
    const int x = picture.width() / 2;
    return {colorAt(image, x, picture.height() / 4), colorAt(image, x, picture.height() * 3 / 4)};
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

TEST(ImageTest, DecodesTheFormatsOfTheWeb) {
    for (const char* format : {"png", "jpeg", "webp", "bmp"}) {
        const auto image = decoded(encoded(twoColors(40, 30), format));
        ASSERT_TRUE(image) << format;
        EXPECT_EQ(image->size(), (Size{40, 30})) << format;
        EXPECT_EQ(halves(*image), "rb") << format;
    }
    const auto image = decoded(gif());
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{2, 2}));
    EXPECT_EQ(colorAt(*image, 0, 0), 'r');
    EXPECT_EQ(colorAt(*image, 0, 1), 'b');
}

TEST(ImageTest, KeepsWhatIsTransparent) {
    QImage picture(10, 10, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    picture.setPixelColor(5, 5, Qt::red);
    const auto image = decoded(encoded(picture, "png"));
    ASSERT_TRUE(image);
    EXPECT_EQ(colorAt(*image, 0, 0), '.');
    EXPECT_EQ(colorAt(*image, 5, 5), 'r');
}

TEST(ImageTest, TurnsPicturesAsTheCameraWasHeld) {
    const auto image = decoded(jpegToBeTurned(twoColors(40, 20)));
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{20, 40}));
    EXPECT_EQ(colorAt(*image, 5, 20), 'b');
    EXPECT_EQ(colorAt(*image, 15, 20), 'r');
}

TEST(ImageTest, DecodesABmpThatIsStoredFromTheTop) {
    auto bytes = encoded(twoColors(40, 30), "bmp");
    const std::int32_t height = -30;
    std::memcpy(bytes.data() + 22, &height, sizeof height);
    const auto image = decoded(bytes);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (Size{40, 30}));
    EXPECT_EQ(halves(*image), "br");
}

TEST(ImageTest, IsAbsentForWhatIsNoPicture) {
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("garbage"), QByteArray("\x89PNG\r\n\x1a\n"), QByteArray("BM"),
          QByteArray("GIF89a"), QByteArray("RIFF\x10\0\0\0WEBP", 12), QByteArray("\xff\xd8\xff"),
          QByteArray(1000, '\0')}) {
        EXPECT_FALSE(decoded(bytes)) << bytes.toPercentEncoding().toStdString();
    }
}

TEST(ImageTest, IsAbsentForAPictureThatWasCutShort) {
    for (const char* format : {"png", "jpeg", "webp", "bmp"}) {
        const auto bytes = encoded(twoColors(40, 30), format);
        for (qsizetype missing = 5; missing <= bytes.size(); missing += 7)
            EXPECT_FALSE(decoded(bytes.chopped(missing))) << format << " without " << missing;
    }
    // Its last two bytes hold no pixels.
    for (qsizetype missing = 3; missing <= gif().size(); ++missing)
        EXPECT_FALSE(decoded(gif().chopped(missing))) << "gif without " << missing;
}

TEST(ImageTest, IsAbsentForFormatsThatNobodyNeeds) {
    EXPECT_FALSE(decoded("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"));
    for (const char* format : {"ppm", "ico", "tiff", "xpm"})
        EXPECT_FALSE(decoded(encoded(twoColors(40, 30), format))) << format;
}

TEST(ImageTest, TakesSixteenMillionPixelsAndNoMore) {
    QImage picture(4000, 4001, QImage::Format_Mono);
    picture.fill(0);
    EXPECT_FALSE(decoded(encoded(picture, "png")));
    EXPECT_FALSE(decoded(encoded(picture, "bmp")));

    const auto largest = decoded(encoded(picture.copy(0, 0, 4000, 4000), "png"));
    ASSERT_TRUE(largest);
    EXPECT_EQ(largest->size(), (Size{4000, 4000}));
}

TEST(ImageTest, IsAbsentForSizesThatAreLies) {
    const auto bmp = encoded(twoColors(40, 30), "bmp");
    const auto bmpOfSize = [&bmp](std::int32_t width, std::int32_t height) {
        auto bytes = bmp;
        std::memcpy(bytes.data() + 18, &width, sizeof width);
        std::memcpy(bytes.data() + 22, &height, sizeof height);
        return bytes;
    };
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
    for (const auto& [width, height] :
         std::vector<std::pair<std::int32_t, std::int32_t>>{{0, 30},
                                                            {40, 0},
                                                            {65536, 65536},
                                                            {40, kMost},
                                                            {40, kLeast},
                                                            {kMost, kMost},
                                                            {-40, 30}}) {
        EXPECT_FALSE(decoded(bmpOfSize(width, height))) << width << " x " << height;
    }

    auto wideScreen = gif();
    wideScreen.replace(6, 4, "\xff\xff\xff\xff", 4);
    if (const auto image = decoded(wideScreen)) {
        EXPECT_LE(image->size().width * image->size().height, 16e6);
    }
}

TEST(ImageTest, DecodesInAnyThread) {
    const auto picture = encoded(twoColors(200, 100), "jpeg");
    const auto garbage = picture.left(picture.size() / 2);
    std::array<bool, 4> wentWell{};
    std::vector<std::thread> threads;
    for (auto& well : wentWell) {
        threads.emplace_back([&] {
            well = true;
            for (int i = 0; i < 20; ++i)
                well = well && decoded(picture) && !decoded(garbage);
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(wentWell, testing::Each(true));
}

// Of a process in which no picture was decoded yet.

const auto& pictures() {
    static const auto& pictures = *new std::vector<QByteArray>{
        encoded(twoColors(40, 30), "png"), encoded(twoColors(40, 30), "jpeg"),
        encoded(twoColors(40, 30), "webp"), encoded(twoColors(40, 30), "bmp"), gif()};
    return pictures;
}

bool decodesAll() {
    return std::ranges::all_of(pictures(), [](auto& bytes) { return decoded(bytes) != nullptr; });
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
