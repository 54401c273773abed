// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/ViewItem.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QStyleHints>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/qt/ViewPainter.h"
#include "VexmoraSDK/presenting/TapTarget.h"
#include "VexmoraSDK/quick/Accessibility.h"
#include "VexmoraSDK/quick/AttachedProperties.h"

namespace VexmoraSDK {
namespace {

// Every graphics card supports textures of this size. A larger view is painted with fewer pixels.
constexpr double kMaxPixelsPerSide = 4096;

constexpr double kFocusFrameWidth = 2;

platform::Size sizeOf(const std::shared_ptr<platform::View>& view) {
    return view ? view->frame().size : platform::Size();
}

platform::Size sizeFrom(QSizeF size) {
    return {size.width(), size.height()};
}

void paintFocusFrame(QPainter& painter, QSizeF size) {
    painter.setPen(QPen(QGuiApplication::palette().highlight(), kFocusFrameWidth));
    const double inset = kFocusFrameWidth / 2;
    painter.drawRect(QRectF({}, size).adjusted(inset, inset, -inset, -inset));
}

}  // namespace

ViewItem::ViewItem(QQuickItem* parent)
    : QQuickItem(parent), accessible_(std::make_unique<AccessibleItem>()) {
    setAcceptedMouseButtons(Qt::LeftButton);
    // The parent may have brought the item into a scene already.
    if (window()) followMirroring();
}

ViewItem::~ViewItem() {
    if (view_) view_->setDisplayCallback({});
}

void ViewItem::setFillMode(Vexmora::FillMode mode) {
    if (std::exchange(fillMode_, mode) == mode) return;
    const QPointer guard(this);
    viewChanged();
    if (guard) Q_EMIT fillModeChanged();
}

void ViewItem::show(std::shared_ptr<platform::View> view) {
    if (view_) view_->setDisplayCallback({});
    // A press on the previous view must not become a tap on this one.
    taps_.cancel();
    unsetCursor();
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
    const auto [width, height] = sizeOf(view_);
    const bool isTappable = view_ && takesTap(*view_, {width / 2, height / 2});
    setActiveFocusOnTab(isTappable);
    setAcceptHoverEvents(isShowing());
    updateImplicitSize();
}

void ViewItem::updateImplicitSize() {
    const auto [width, height] =
        preferredSize(FillMode(fillMode_), sizeOf(view_), sizeFrom(reservedSize_));
    setImplicitSize(std::min<double>(width, kMaxImplicitSize),
                    std::min<double>(height, kMaxImplicitSize));
}

AdPosition ViewItem::adPosition() const {
    return AdPosition::of(FillMode(fillMode_), sizeOf(view_), sizeFrom(size()), mirrored_);
}

QRectF ViewItem::boundingRect() const {
    const auto [width, height] = sizeOf(view_);
    if (width <= 0 || height <= 0) return QQuickItem::boundingRect();
    const auto [origin, scale] = adPosition();
    return {origin.x, origin.y, width * scale, height * scale};
}

// The view belongs to the main thread; the render thread gets a picture of it.
void ViewItem::updatePolish() {
    paintPicture();
    pictureIsNew_ = true;
    // Qt Quick asks an item without contents for no node. The update that removes the node that it
    // had is scheduled before the flag is cleared.
    setFlag(ItemHasContents);
    update();
    setFlag(ItemHasContents, !picture_.isNull());
}

void ViewItem::paintPicture() {
    picture_ = QImage();
    const auto [width, height] = sizeOf(view_);
    if (width <= 0 || height <= 0 || !window()) return;
    const auto [origin, scale] = adPosition();
    const double screenScale = window()->effectiveDevicePixelRatio();
    const double pixelsPerPoint =
        std::min({scale * screenScale, kMaxPixelsPerSide / width, kMaxPixelsPerSide / height});
    const auto pixels = [pixelsPerPoint](double points) {
        return std::clamp(qCeil(points * pixelsPerPoint), 1, int(kMaxPixelsPerSide));
    };
    picture_ = QImage(pixels(width), pixels(height), QImage::Format_ARGB32_Premultiplied);
    picture_.fill(Qt::transparent);
    // The picture starts at a whole pixel of the screen, so that it stays sharp.
    const auto aligned = [screenScale](double point) {
        return std::round(point * screenScale) / screenScale;
    };
    pictureRect_ = QRectF(QPointF(aligned(origin.x), aligned(origin.y)),
                          QSizeF(picture_.size()) * (scale / pixelsPerPoint));
    QPainter painter(&picture_);
    painter.scale(pixelsPerPoint, pixelsPerPoint);
    platform::paintView(painter, *view_);
    if (hasActiveFocus() && activeFocusOnTab()) paintFocusFrame(painter, {width, height});
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
        node->setRect(pictureRect_);
    }
    return node;
}

bool ViewItem::event(QEvent* event) {
    if (event->type() == QEvent::LanguageChange) updateAccessibility();
    return QQuickItem::event(event);
}

void ViewItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange || change == ItemDevicePixelRatioHasChanged ||
        change == ItemActiveFocusHasChanged) {
        polish();
    }
    if (change == ItemSceneChange && data.window) {
        updateAccessibility();
        followMirroring();
    }
    QQuickItem::itemChange(change, data);
}

void ViewItem::followMirroring() {
    static const auto slot =
        staticMetaObject.method(staticMetaObject.indexOfSlot("mirroringChanged()"));
    VexmoraSDK::followMirroring(this, slot);
    mirroringChanged();
}

void ViewItem::mirroringChanged() {
    mirrored_ = isMirrored(this);
    polish();
}

void ViewItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    const bool isMoved = fillMode_ == Vexmora::FillMode::Fit || mirrored_;
    if (isMoved && newGeometry.size() != oldGeometry.size()) polish();
}

bool ViewItem::takesTapAt(QPointF position) const {
    return view_ && takesTap(*view_, adPosition().toAd({position.x(), position.y()}));
}

void ViewItem::hoverMoveEvent(QHoverEvent* event) {
    if (takesTapAt(event->position()))
        setCursor(Qt::PointingHandCursor);
    else
        unsetCursor();
    event->ignore();
}

void ViewItem::keyPressEvent(QKeyEvent* event) {
    constexpr std::array kKeys = {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Select};
    const bool presses = hasActiveFocus() && std::ranges::find(kKeys, event->key()) != kKeys.end();
    event->setAccepted(presses);
    if (presses && !event->isAutoRepeat()) press();
}

// Presses that the view does not use go to the item behind.
void ViewItem::mousePressEvent(QMouseEvent* event) {
    if (takesTapAt(event->position()))
        taps_.press({event->scenePosition().x(), event->scenePosition().y()});
    else
        event->ignore();
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

void ViewItem::press() {
    if (view_) tap(boundingRect().center());
}

// The tap is queued, so that the host may destroy the item inside its delegate. Until it runs, an
// earlier tap may have disabled the item or removed the view.
void ViewItem::tap(QPointF position) {
    platform::MainQueue::main()->async([item = QPointer(this), view = view_, position] {
        if (!item || !item->isEnabled() || !view || item->view_ != view) return;
        if (!item->takesTapAt(position)) return;
        view->tap(item->adPosition().toAd({position.x(), position.y()}));
    });
}

}  // namespace VexmoraSDK
