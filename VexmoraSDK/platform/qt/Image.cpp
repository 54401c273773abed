#include "VexmoraSDK/platform/images/Image.h"

#include <QtCore/QIODevice>
#include <QtCore/QThreadPool>
#include <QtGui/QImageReader>
#include <algorithm>
#include <cstring>
#include <string_view>

#include "VexmoraSDK/platform/qt/QuietScope.h"

namespace VexmoraSDK::platform {
namespace {

constexpr qint64 kMaxPixels = 16'000'000;

/// The bytes of a picture. Some decoders fill up with grey what is missing at the end of a picture
/// and are content; from here it is heard that they asked for more.
class Bytes : public QIODevice {
 public:
    explicit Bytes(const Data& data) : data_(data) { open(ReadOnly | Unbuffered); }

    qint64 size() const override { return static_cast<qint64>(data_.size()); }

    void forgetReads() { gaveLess_ = gaveNothing_ = false; }
    /// Whether a read got less than it asked for.
    bool gaveLess() const { return gaveLess_; }
    /// Whether a read got nothing at all.
    bool gaveNothing() const { return gaveNothing_; }

 protected:
    qint64 readData(char* target, qint64 wanted) override {
        const qint64 given = std::clamp<qint64>(size() - pos(), 0, wanted);
        gaveLess_ = gaveLess_ || given < wanted;
        gaveNothing_ = gaveNothing_ || (given == 0 && wanted > 0);
        std::copy_n(textOf(data_).data() + pos(), given, target);
        return given;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

 private:
    const Data& data_;
    bool gaveLess_ = false;
    bool gaveNothing_ = false;
};

// Memory is taken for the screen of a GIF, and its reader tells of the first picture on it. That
// one decides how large a screen is that has no width or height.
bool hasAcceptedScreen(const Data& gif) {
    const auto number = [&](std::size_t at) {
        return std::to_integer<qint64>(gif[at]) + 256 * std::to_integer<qint64>(gif[at + 1]);
    };
    if (gif.size() < 10) return false;
    const qint64 pixels = number(6) * number(8);
    return pixels > 0 && pixels <= kMaxPixels;
}

bool hasAcceptedSize(const QImageReader& reader) {
    const QSize size = reader.size();
    // A BMP that is stored from the top has a negative height.
    const qint64 pixels = std::abs(qint64{size.width()} * size.height());
    return size != QSize() && pixels > 0 && pixels <= kMaxPixels;
}

/// The formats of the web and no other: each further decoder is one more that a server can feed.
struct Format {
    std::string_view name;
    std::string_view beginning;
};
constexpr Format kFormats[] = {
    {"png", "\x89PNG"}, {"jpeg", "\xFF\xD8"}, {"webp", "RIFF"}, {"gif", "GIF8"}, {"bmp", "BM"}};

QImage read(const Data& data) {
    for (const auto& [format, beginning] : kFormats) {
        if (!textOf(data).starts_with(beginning)) continue;
        Bytes bytes(data);
        QImageReader reader(&bytes, format.data());
        reader.setAutoDetectImageFormat(false);
        reader.setAutoTransform(true);
        if (!hasAcceptedSize(reader)) return QImage();
        if (format == "gif" && !hasAcceptedScreen(data)) return QImage();
        bytes.forgetReads();
        auto image = reader.read();
        // BMP is read row by row. The others are read in chunks, and the last chunk of a whole
        // picture is short too.
        const bool cutShort = format == "bmp" ? bytes.gaveLess() : bytes.gaveNothing();
        return cutShort ? QImage() : image;
    }
    return QImage();
}

QImage inFormatForPainting(QImage image) {
    return std::move(image).convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

}  // namespace

void Image::prepareDecoding() {
    const QuietScope quiet;
    // Asks the plugin of each format, and so loads it.
    for (const auto& [format, beginning] : kFormats) {
        const Data none;
        Bytes bytes(none);
        QImageReader(&bytes, format.data()).canRead();
    }
    // Takes part in converting large pictures.
    QThreadPool::globalInstance();
}

std::shared_ptr<const Image> Image::fromData(const Data& data) {
    const QuietScope quiet;
    const auto image = inFormatForPainting(read(data));
    if (image.isNull()) return nullptr;
    const auto width = static_cast<std::size_t>(image.width());
    const auto height = static_cast<std::size_t>(image.height());
    auto pixels = std::make_unique<std::uint32_t[]>(width * height);
    for (std::size_t y = 0; y < height; ++y) {
        std::memcpy(pixels.get() + y * width, image.constScanLine(static_cast<int>(y)), width * 4);
    }
    return std::make_shared<const Image>(image.width(), image.height(), std::move(pixels),
                                         image.format() == QImage::Format_RGB32);
}

}  // namespace VexmoraSDK::platform
