#include "tests/faults/Site.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QtEndian>
#include <QtGui/QImage>
#include <cstdlib>
#include <stdexcept>

#include "adserver/AdServer.h"

namespace VexmoraSDK {
namespace {

constexpr auto kVariable = "VEXMORA_TEST_TEMPLATE";

QByteArray encoded(const QImage& image, const char* format) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!image.save(&buffer, format)) throw std::runtime_error(format);
    return bytes;
}

QByteArray encoded(const char* format) {
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    return encoded(image, format);
}

template <class Number>
void put(QByteArray& bytes, qsizetype at, Number number) {
    qToLittleEndian(number, bytes.data() + at);
}

/// PNG guards its size with a checksum, so that one is real: 256 million pixels of a bit each.
QByteArray pngBomb() {
    QImage image(16'000, 16'000, QImage::Format_Mono);
    image.fill(0);
    return encoded(image, "png");
}

QByteArray jpegBomb() {
    auto bytes = encoded("jpeg");
    const auto frame = bytes.indexOf("\xff\xc0");
    bytes.replace(frame + 5, 4, "\xff\x00\xff\x00", 4);
    return bytes;
}

QByteArray webpBomb() {
    auto bytes = encoded("webp");
    put<quint16>(bytes, 26, 16'383);
    put<quint16>(bytes, 28, 16'383);
    return bytes;
}

QByteArray bmpBomb() {
    auto bytes = encoded("bmp");
    put<qint32>(bytes, 18, 30'000);
    put<qint32>(bytes, 22, 30'000);
    return bytes;
}

/// A screen of that many pixels a side, and one picture on it.
QByteArray gif(const char* screen, const char* picture) {
    return QByteArray("GIF89a") + QByteArray::fromHex(screen) + QByteArray::fromHex(screen) +
           QByteArray::fromHex("800000ff00000000ff") + QByteArray::fromHex("2c00000000") +
           QByteArray::fromHex(picture) + QByteArray::fromHex(picture) +
           QByteArray::fromHex("000203041205003b");
}

class Bombs {
 public:
    Catalog catalog() {
        std::string error;
        auto catalog = Catalog::load(Catalog::defaultFile(), error);
        if (!catalog) throw std::runtime_error(error);
        add(*catalog, "png", pngBomb());
        add(*catalog, "jpeg", jpegBomb());
        add(*catalog, "webp", webpBomb());
        add(*catalog, "bmp", bmpBomb());
        add(*catalog, "gif", gif("ffff", "ffff"));
        add(*catalog, "gif-frame", gif("0200", "ffff"));
        return std::move(*catalog);
    }

 private:
    void add(Catalog& catalog, const std::string& format, const QByteArray& bytes) {
        const auto name = QString::fromStdString("bomb." + format);
        QFile file(folder_.filePath(name));
        if (!file.open(QFile::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error(format);
        catalog.placements["bomb-" + format] = {{Creative::native, "/landing/bomb",
                                                 QFile::encodeName(file.fileName()).toStdString(),
                                                 "A bomb", "Boom.", "Acme"}};
    }

    QTemporaryDir folder_;
};

}  // namespace

std::string Site::requestUrlFormat() {
    if (const char* known = std::getenv(kVariable)) return known;
    static Bombs bombs;
    static const AdServer server(bombs.catalog());
    setenv(kVariable, server.requestUrlFormat().c_str(), 1);
    return server.requestUrlFormat();
}

}  // namespace VexmoraSDK
