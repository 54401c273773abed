#include "VexmoraSDK/platform/Image.h"

#include <QtCore/QBuffer>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QImageReader>
#include <cstdlib>

#include "VexmoraSDK/platform/qt/ImageImpl.h"

namespace VexmoraSDK::platform {
namespace {

constexpr qint64 kMaxPixels = 16'000'000;

thread_local bool decoding = false;

void forwardMessage(QtMsgType type, const QMessageLogContext& context, const QString& message);

// What Qt and its codecs say of bad pictures is not ours to print. Logging rules would silence the
// host's own pictures with ours, and a handler put in place for each decoding would, when two
// threads decode, put back the wrong one. So one handler, put in place once, drops what a thread
// says while it decodes for us and hands everything else to the handler that it replaced. A host
// that sets its handler later hears everything.
QtMessageHandler replacedHandler() {
    // A message that comes from another thread in the midst of this waits for it.
    static const QtMessageHandler handler = qInstallMessageHandler(forwardMessage);
    return handler;
}

void forwardMessage(QtMsgType type, const QMessageLogContext& context, const QString& message) {
    if (!decoding || type == QtFatalMsg) replacedHandler()(type, context, message);
}

bool hasAcceptedSize(const QImageReader& reader) {
    const QSize size = reader.size();
    // A BMP that is stored from the top has a negative height.
    const qint64 pixels = qint64{std::abs(size.width())} * std::abs(size.height());
    return size != QSize() && pixels > 0 && pixels <= kMaxPixels;
}

QImage read(QByteArray bytes) {
    // The formats of the web and no other: each further decoder is one more that a server can feed.
    for (const char* format : {"png", "jpeg", "webp", "gif", "bmp"}) {
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::ReadOnly);
        QImageReader reader(&buffer, format);
        reader.setAutoDetectImageFormat(false);
        reader.setAutoTransform(true);
        if (reader.canRead()) return hasAcceptedSize(reader) ? reader.read() : QImage();
    }
    return QImage();
}

QImage inFormatForPainting(QImage image) {
    return std::move(image).convertToFormat(
        image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
}

}  // namespace

std::shared_ptr<const Image> Image::fromData(const Data& data) {
    replacedHandler();
    const QScopedValueRollback rollback(decoding, true);
    auto image = read(QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                              static_cast<qsizetype>(data.size())));
    if (image.isNull()) return nullptr;
    return std::make_shared<const Image>(
        std::make_unique<const Impl>(Impl{inFormatForPainting(std::move(image))}));
}

Image::Image(std::unique_ptr<const Impl> impl) : impl_(std::move(impl)) {}

Image::~Image() = default;

Size Image::size() const {
    return {static_cast<double>(impl_->image.width()), static_cast<double>(impl_->image.height())};
}

}  // namespace VexmoraSDK::platform
