// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VexmoraScreenItem.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtQuick/QQuickPaintedItem>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <array>
#include <utility>

#include "VexmoraSDK/platform/MainQueue.h"
#include "VexmoraSDK/platform/ui/Button.h"
#include "VexmoraSDK/presenting/InterstitialLayout.h"
#include "VexmoraSDK/presenting/Presentation.h"
#include "VexmoraSDK/quick/Accessibility.h"
#include "VexmoraSDK/quick/AttachedProperties.h"
#include "VexmoraSDK/views/VexmoraInterstitialView.h"

namespace VexmoraSDK {
namespace {

constexpr int kMoveMilliseconds = 250;

bool isCloseKey(const QKeyEvent* event) {
    return event->key() == Qt::Key_Escape || event->key() == Qt::Key_Back;
}

bool isPressKey(const QKeyEvent* event) {
    constexpr std::array kKeys = {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Select};
    return std::ranges::find(kKeys, event->key()) != kKeys.end();
}

}  // namespace

class VexmoraScreenItem::Stage : public ViewItem {
 public:
    explicit Stage(QQuickItem* parent) : ViewItem(parent) {}
    using ViewItem::show;
};

/// Draws only the focus frame.
class VexmoraScreenItem::CloseKey : public QQuickPaintedItem {
 public:
    explicit CloseKey(QQuickItem* parent) : QQuickPaintedItem(parent) { setVisible(false); }

    void paint(QPainter* painter) override {
        if (!hasActiveFocus()) return;
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(QGuiApplication::palette().highlight(), 3));
        painter->drawEllipse(boundingRect().adjusted(2, 2, -2, -2));
    }

    AccessibleItem accessible;

 protected:
    void itemChange(ItemChange change, const ItemChangeData& data) override {
        if (change == ItemActiveFocusHasChanged) update();
        QQuickPaintedItem::itemChange(change, data);
    }
};

VexmoraScreenItem::VexmoraScreenItem(QQuickItem* parent)
    : presentation_(std::make_unique<Presentation>([this](bool animated) { leave(animated); })),
      stage_(new Stage(this)),
      closeKey_(new CloseKey(stage_)),
      movement_(stage_, "y"),
      accessible_(std::make_unique<AccessibleItem>()) {
    // An item cannot become a focus scope once it is in a window and has children.
    setFlag(ItemIsFocusScope);
    setParent(parent);
    setParentItem(parent);
    setClip(true);
    connect(this, &VexmoraScreenItem::closeRectChanged, this,
            &VexmoraScreenItem::updateAccessibility);
    connect(this, &VexmoraScreenItem::presentingChanged, this,
            &VexmoraScreenItem::closeLabelChanged);
    movement_.setDuration(kMoveMilliseconds);
    movement_.setEasingCurve(QEasingCurve::OutCubic);
    // Queued, because all animations stand still while a host's slot runs in this signal. The ad
    // may have been closed since it was emitted.
    const auto hasMoved = [this] {
        if (presentation_->isLeaving() && !isMoving()) leftScreen();
    };
    connect(&movement_, &QPropertyAnimation::finished, this, hasMoved, Qt::QueuedConnection);
    // The signal is queued, so that the host may destroy the screen inside it.
    connect(&movement_, &QPropertyAnimation::stateChanged, this, &VexmoraScreenItem::movingChanged,
            Qt::QueuedConnection);
}

VexmoraScreenItem::~VexmoraScreenItem() {
    if (isPresenting()) giveFocusBack();
}

bool VexmoraScreenItem::present(QObject* object) {
    auto* const item = qobject_cast<VexmoraAdItem*>(object);
    auto* const ad = item ? item->ad() : qobject_cast<VexmoraAd*>(object);
    if (!ad) return false;
    const auto fillMode = FillMode(ad->fillMode());
    const auto& drawn = ad->slot().view();
    if (item && item->view() != drawn) return present(item->view(), nullptr, fillMode);
    return ad->slot().isPresentable() && present(drawn, ad, fillMode);
}

bool VexmoraScreenItem::present(std::shared_ptr<VexmoraView> view) {
    return present(std::move(view), nullptr, FillMode::asIs);
}

bool VexmoraScreenItem::present(std::shared_ptr<VexmoraView> view, VexmoraAd* ad,
                                FillMode fillMode) {
    if (isPresenting() || !view || view->viewType() != VexmoraViewType::interstitial) return false;
    if (!isDrawn(*view) || view->window()) return false;
    presentation_->begin(view);
    ad_ = ad;
    fillMode_ = fillMode;
    layOut();
    stage_->show(std::move(view));
    stage_->setEnabled(true);
    stage_->setY(height());
    setAcceptedMouseButtons(Qt::AllButtons);
    setAcceptTouchEvents(true);
    setAcceptHoverEvents(true);
    setCursor(Qt::ArrowCursor);
    moveStage(0);
    focusedBefore_ = window() ? window()->activeFocusItem() : nullptr;
    // The host may destroy this screen inside the following signals.
    const QPointer guard(this);
    if (ad_) ad_->setStage(stage_);
    if (guard) forceActiveFocus();
    if (guard) Q_EMIT closeRectChanged();
    if (guard) Q_EMIT presentingChanged();
    return true;
}

void VexmoraScreenItem::layOut() {
    auto& view = static_cast<VexmoraView&>(*presentation_->view());
    view.setFrame({{0, 0}, {width(), height()}});
    view.setSafeAreaInsets(insets_);
    view.setMirrored(isMirrored(this));
    layOutInterstitial(view, fillMode_, window() ? window()->effectiveDevicePixelRatio() : 1);
    stage_->setSize(size());
}

bool VexmoraScreenItem::isPresenting() const {
    return presentation_->view() != nullptr;
}

// The press is queued, so that the host may destroy the screen inside its delegate.
void VexmoraScreenItem::close() {
    platform::MainQueue::main()->async([screen = QPointer(this)] {
        if (!screen || screen->presentation_->isLeaving()) return;
        if (const auto button = screen->closeButton()) button->press();
    });
}

void VexmoraScreenItem::leave(bool animated) {
    stage_->setEnabled(false);
    if (animated) {
        moveStage(height());
    } else {
        leftScreen();
    }
}

void VexmoraScreenItem::leftScreen() {
    movement_.stop();
    stage_->show(nullptr);
    presentation_->end();
    setAcceptedMouseButtons(Qt::NoButton);
    setAcceptTouchEvents(false);
    setAcceptHoverEvents(false);
    unsetCursor();
    const QPointer guard(this);
    if (ad_) ad_->setStage(nullptr);
    if (!guard) return;
    giveFocusBack();
    // The host may present the next ad inside a focus event.
    if (guard && !isPresenting()) setFocus(false);
    if (guard && isPresenting()) forceActiveFocus();
    if (guard) Q_EMIT closeRectChanged();
    if (guard) Q_EMIT presentingChanged();
}

// Focus returns, unless the host has moved it elsewhere since. The window may be inactive.
void VexmoraScreenItem::giveFocusBack() {
    const bool isInactive = window() && !window()->isActive();
    if (focusedBefore_ && (isInactive ? hasFocus() : hasActiveFocus()))
        focusedBefore_->forceActiveFocus();
}

void VexmoraScreenItem::moveStage(double to) {
    movement_.stop();
    movement_.setStartValue(stage_->y());
    movement_.setEndValue(to);
    movement_.start();
}

void VexmoraScreenItem::setTopInset(double inset) {
    setInset(&platform::EdgeInsets::top, inset);
}

void VexmoraScreenItem::setLeftInset(double inset) {
    setInset(&platform::EdgeInsets::left, inset);
}

void VexmoraScreenItem::setBottomInset(double inset) {
    setInset(&platform::EdgeInsets::bottom, inset);
}

void VexmoraScreenItem::setRightInset(double inset) {
    setInset(&platform::EdgeInsets::right, inset);
}

void VexmoraScreenItem::setInset(double platform::EdgeInsets::*edge, double inset) {
    if (qFuzzyCompare(insets_.*edge, inset)) return;
    insets_.*edge = inset;
    if (isPresenting()) presentation_->view()->setSafeAreaInsets(insets_);
    const QPointer guard(this);
    Q_EMIT insetsChanged();
    if (guard) Q_EMIT closeRectChanged();
}

QString VexmoraScreenItem::closeLabel() const {
    const auto button = closeButton();
    return button ? translated(button->accessibilityLabel()) : QString();
}

QRectF VexmoraScreenItem::closeRect() const {
    const auto button = closeButton();
    if (!button) return {};
    const auto [origin, size] = button->frame();
    return {origin.x, origin.y, size.width, size.height};
}

std::shared_ptr<platform::Button> VexmoraScreenItem::closeButton() const {
    const auto interstitial =
        std::dynamic_pointer_cast<VexmoraInterstitialView>(presentation_->view());
    return interstitial ? interstitial->closeButton() : nullptr;
}

void VexmoraScreenItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry) {
    QQuickItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size()) layOutAgain();
}

void VexmoraScreenItem::layOutAgain() {
    if (!isPresenting()) return;
    layOut();
    Q_EMIT closeRectChanged();
}

void VexmoraScreenItem::itemChange(ItemChange change, const ItemChangeData& data) {
    if (change == ItemSceneChange && data.window) {
        updateAccessibility();
        followMirroring(this, metaObject()->method(metaObject()->indexOfSlot("layOutAgain()")));
    }
    QQuickItem::itemChange(change, data);
}

void VexmoraScreenItem::updateAccessibility() {
    const QRectF rect = closeRect();
    closeKey_->setPosition(rect.topLeft());
    closeKey_->setSize(rect.size());
    closeKey_->setVisible(!rect.isEmpty());
    auto* const button = closeKey_->accessible.update(closeKey_, QAccessible::Button, closeLabel(),
                                                      false, {this, "close()"});
    if (button) button->setProperty("focusable", true);
    accessible_->update(this, QAccessible::Dialog, translated("Advertisement"), !isPresenting());
}

bool VexmoraScreenItem::event(QEvent* event) {
    // Otherwise a shortcut of the host would get the key.
    if (event->type() == QEvent::ShortcutOverride && isPresenting() &&
        isCloseKey(static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    const bool known = QQuickItem::event(event);
    if (event->type() == QEvent::LanguageChange) {
        updateAccessibility();
        Q_EMIT closeLabelChanged();
    }
    return known;
}

void VexmoraScreenItem::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(isPresenting());
    if (!isPresenting() || presentation_->isLeaving()) return;
    // Focus stays in the presented ad: Tab leads to the close button only.
    if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab)
        closeKey_->forceActiveFocus(Qt::TabFocusReason);
    else if (isCloseKey(event) || (closeKey_->hasActiveFocus() && isPressKey(event)))
        close();
}

void VexmoraScreenItem::keyReleaseEvent(QKeyEvent* event) {
    event->setAccepted(isPresenting());
}

// Swallows the events, so that they do not reach the items behind a presented ad.
void VexmoraScreenItem::mousePressEvent(QMouseEvent*) {}
void VexmoraScreenItem::hoverEnterEvent(QHoverEvent*) {}
void VexmoraScreenItem::hoverMoveEvent(QHoverEvent*) {}
void VexmoraScreenItem::hoverLeaveEvent(QHoverEvent*) {}
void VexmoraScreenItem::wheelEvent(QWheelEvent* event) {
    event->setAccepted(isPresenting());
}
void VexmoraScreenItem::touchEvent(QTouchEvent* event) {
    event->setAccepted(isPresenting());
}

}  // namespace VexmoraSDK
