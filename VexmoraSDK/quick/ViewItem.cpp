#include "VexmoraSDK/quick/ViewItem.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QStyleHints>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <algorithm>
#include <cmath>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/presenting/TapTarget.h"

namespace VexmoraSDK {
namespace {

// Every graphics card takes that many in one texture. A larger view is painted with fewer pixels.
constexpr double kMaxPixelsPerSide = 4096;

QSizeF sizeOf(const std::shared_ptr<platform::View>& view) {
    if (!view) return QSizeF(0, 0);
    const auto [width, height] = view->frame().size;
    return QSizeF(width, height);
}

}  // namespace

ViewItem::ViewItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setAcceptedMouseButtons(Qt::LeftButton);
}

ViewItem::~ViewItem() {
    if (view_) view_->setDisplayCallback({});
}

void ViewItem::press() {
    const QSizeF size = sizeOf(view_);
    tap({size.width() / 2, size.height() / 2});
}

void ViewItem::show(std::shared_ptr<platform::View> view) {
    if (view_) view_->setDisplayCallback({});
    // A press on the former view shall not end as a tap on this one.
    taps_.cancel();
    view_ = std::move(view);
    if (view_) view_->setDisplayCallback([this] { viewChanged(); });
    viewChanged();
}

void ViewItem::setReservedSize(QSizeF size) {
    reservedSize_ = size;
    updateImplicitSize();
}

void ViewItem::viewChanged() {
    polish();
    updateImplicitSize();
}

void ViewItem::updateImplicitSize() {
    const QSizeF size = sizeOf(view_).isEmpty() ? reservedSize_ : sizeOf(view_);
    const auto bounded = size.boundedTo(QSizeF(kMaxImplicitSize, kMaxImplicitSize));
    setImplicitSize(bounded.width(), bounded.height());
}

// The view belongs to this thread; the thread that renders gets a picture of it.
void ViewItem::updatePolish() {
    picture_ = QImage();
    pictureIsNew_ = true;
    update();
    const QSizeF size = sizeOf(view_);
    if (size.isEmpty() || !window()) return;
    const double scale =
        std::min({window()->effectiveDevicePixelRatio(), kMaxPixelsPerSide / size.width(),
                  kMaxPixelsPerSide / size.height()});
    const auto pixels = [scale](double points) {
        return std::min(qCeil(points * scale), static_cast<int>(kMaxPixelsPerSide));
    };
    picture_ =
        QImage(pixels(size.width()), pixels(size.height()), QImage::Format_ARGB32_Premultiplied);
    picture_.fill(Qt::transparent);
    pictureSize_ = QSizeF(picture_.size()) / scale;
    QPainter painter(&picture_);
    painter.scale(scale, scale);
    platform::paintView(painter, *view_);
}

QSGNode* ViewItem::updatePaintNode(QSGNode* oldNode, UpdatePaintNodeData*) {
    auto* node = static_cast<QSGImageNode*>(oldNode);
    if (picture_.isNull()) {
        delete node;
        return nullptr;
    }
    if (!node) {
        node = window()->createImageNode();
        node->setOwnsTexture(true);
        node->setFiltering(QSGTexture::Linear);
        pictureIsNew_ = true;
    }
    if (std::exchange(pictureIsNew_, false)) {
        node->setTexture(window()->createTextureFromImage(picture_));
        node->setSourceRect(QRectF(picture_.rect()));
        node->setRect(QRectF({}, pictureSize_));
    }
    return node;
}

void ViewItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged) polish();
    if (change == ItemSceneChange && data.window) updateAccessibility();
    QQuickItem::itemChange(change, data);
}

// Presses that the view has no use for go to what is behind the item.
void ViewItem::mousePressEvent(QMouseEvent* event) {
    const QPointF position = event->position();
    if (view_ && takesTap(*view_, {position.x(), position.y()})) {
        taps_.press({event->scenePosition().x(), event->scenePosition().y()});
    } else {
        event->ignore();
    }
}

void ViewItem::mouseMoveEvent(QMouseEvent* event) {
    taps_.move({event->scenePosition().x(), event->scenePosition().y()},
               QGuiApplication::styleHints()->startDragDistance());
}

void ViewItem::mouseReleaseEvent(QMouseEvent* event) {
    if (taps_.release()) tap(event->position());
}

void ViewItem::mouseUngrabEvent() {
    taps_.cancel();
}

// The tap is handed in later, so that a host may destroy the item while it hears of it. Until then
// an earlier tap may have disabled the item or taken the view away.
void ViewItem::tap(QPointF position) {
    platform::MainQueue::main()->async([item = QPointer(this), view = view_, position] {
        if (!item || !item->isEnabled() || !view || item->view_ != view) return;
        const platform::Point point{position.x(), position.y()};
        if (takesTap(*view, point)) view->tap(point);
    });
}

}  // namespace VexmoraSDK
