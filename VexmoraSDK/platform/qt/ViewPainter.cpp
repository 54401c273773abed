// SPDX-License-Identifier: MIT
#include "VexmoraSDK/platform/qt/ViewPainter.h"

#include <QtGui/QPainter>
#include <utility>

#include "VexmoraSDK/platform/qt/QtImage.h"
#include "VexmoraSDK/platform/qt/TextLayoutImpl.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/platform/ui/ImageView.h"
#include "VexmoraSDK/platform/ui/TextView.h"

namespace VexmoraSDK::platform {
namespace {

QColor qtColor(Color color) {
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue), static_cast<float>(color.alpha));
}

QRectF qtRect(Rect rect) {
    return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

QRectF bounds(const View& view) {
    return qtRect({{}, view.frame().size});
}

/// A reduced picture, kept from its second painting at one size on, because a third is likely then.
struct Reduced {
    QImage image;
    QSize sizeBefore;
};

// Reduces the picture to the pixels that will be shown. The painter itself would skip the others
// instead of averaging them.
QImage reduced(const std::shared_ptr<const Image>& picture, QSize devicePixels) {
    auto image = qtImage(picture);
    const QSize size = image.size().boundedTo(devicePixels);
    if (size == image.size() || size.isEmpty()) return image;
    auto& derived = picture->derivedByPainter();
    if (!derived.has_value()) derived = Reduced();
    auto& kept = std::any_cast<Reduced&>(derived);
    if (size == kept.image.size()) return kept.image;
    auto scaled = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (std::exchange(kept.sizeBefore, size) == size) kept.image = scaled;
    return scaled;
}

void paintImage(QPainter& painter, const ImageView& view) {
    if (!view.image()) return;
    const QRectF rect = qtRect(view.imageRect());
    const QSize devicePixels = painter.deviceTransform().mapRect(rect).toAlignedRect().size();
    painter.drawImage(rect, reduced(view.image(), devicePixels));
}

void paintLines(QPainter& painter, const TextLayout& lines, Point origin, Color color) {
    painter.setPen(qtColor(color));
    lines.impl().lines().draw(&painter, {origin.x, origin.y});
}

void paintText(QPainter& painter, TextView& view) {
    painter.save();
    painter.setClipRect(bounds(view), Qt::IntersectClip);
    paintLines(painter, view.layout(), view.layoutOrigin(), view.textColor());
    painter.restore();
}

void paintBackground(QPainter& painter, const View& view) {
    const auto color = view.backgroundColor();
    if (!color) return;
    // Qt starts its thread pool to fill a path, but not to fill a rectangle.
    if (view.cornerRadius() <= 0) return painter.fillRect(bounds(view), qtColor(*color));
    painter.setPen(Qt::NoPen);
    painter.setBrush(qtColor(*color));
    painter.drawRoundedRect(bounds(view), view.cornerRadius(), view.cornerRadius());
}

// The layout is wider than the title, and a right-to-left title lies at its far end.
void paintTitle(QPainter& painter, Button& button) {
    const Point origin = button.layoutOrigin();
    const double left = button.layout().impl().lines().lineAt(0).naturalTextRect().left();
    paintLines(painter, button.layout(), {origin.x - left, origin.y}, button.titleColor());
}

void paintOwn(QPainter& painter, View& view) {
    paintBackground(painter, view);
    if (const auto* imageView = dynamic_cast<ImageView*>(&view)) {
        paintImage(painter, *imageView);
    } else if (auto* textView = dynamic_cast<TextView*>(&view)) {
        paintText(painter, *textView);
    } else if (auto* button = dynamic_cast<Button*>(&view)) {
        paintTitle(painter, *button);
    }
}

void paintTree(QPainter& painter, View& view) {
    if (view.isHidden()) return;
    paintOwn(painter, view);
    for (const auto& subview : view.subviewsInPaintOrder()) {
        const Point origin = subview->frame().origin;
        painter.translate(origin.x, origin.y);
        paintTree(painter, *subview);
        painter.translate(-origin.x, -origin.y);
    }
}

}  // namespace

void paintView(QPainter& painter, View& view) {
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintTree(painter, view);
    painter.restore();
}

}  // namespace VexmoraSDK::platform
