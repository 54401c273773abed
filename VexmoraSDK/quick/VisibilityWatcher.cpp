// SPDX-License-Identifier: MIT
#include "VexmoraSDK/quick/VisibilityWatcher.h"

#include <QtCore/QEvent>
#include <QtGui/QColor>
#include <QtGui/QRegion>
#include <QtQuick/QQuickRenderControl>
#include <algorithm>
#include <vector>

namespace VexmoraSDK {
namespace {

/// Too short a delay to notice.
constexpr int kDelayMilliseconds = 50;

QRect rectInScene(const QQuickItem& item, const QRectF& rect) {
    return item.mapRectToScene(rect).toAlignedRect();
}

/// The window that a scene is seen in: another one than its own when that is painted into a widget.
QWindow* windowOnScreen(QQuickWindow* window) {
    auto* const other = QQuickRenderControl::renderWindowFor(window);
    return other ? other : window;
}

double area(const QRegion& region) {
    double area = 0;
    for (const QRect& rect : region)
        area += double(rect.width()) * rect.height();
    return area;
}

bool isSeenThrough(const QQuickItem& item) {
    if (!item.flags().testFlag(QQuickItem::ItemHasContents)) return true;
    const QVariant color = item.property("color");
    return color.isValid() && color.value<QColor>().alpha() == 0;
}

/// The region of the scene that an item and its descendants cover.
QRegion coveredBy(const QQuickItem& item, QRegion within) {
    if (!item.isVisible() || item.opacity() <= 0 || within.isEmpty()) return {};
    const QRegion own = within & rectInScene(item, item.boundingRect());
    if (item.clip()) within = own;
    QRegion covered = isSeenThrough(item) ? QRegion() : own;
    for (const auto* child : item.childItems())
        covered |= coveredBy(*child, within);
    return covered;
}

/// The children of `parent` that are painted above `child`.
std::vector<QQuickItem*> siblingsAbove(const QQuickItem& parent, const QQuickItem& child) {
    const auto siblings = parent.childItems();
    const auto isAbove = [&, seen = false](const QQuickItem* sibling) mutable {
        if (sibling == &child) return !(seen = true);
        return sibling->z() > child.z() || (seen && sibling->z() == child.z());
    };
    std::vector<QQuickItem*> above;
    std::ranges::copy_if(siblings, std::back_inserter(above), isAbove);
    return above;
}

}  // namespace

VisibilityWatcher::VisibilityWatcher() {
    timer_.setSingleShot(true);
    timer_.setInterval(kDelayMilliseconds);
    connect(&timer_, &QTimer::timeout, this, &VisibilityWatcher::changed);
}

void VisibilityWatcher::setItem(QQuickItem* item) {
    if (item == item_) return;
    if (item_) item_->disconnect(this);
    item_ = item;
    watchWindow(item ? item->window() : nullptr);
    if (item) {
        connect(item, &QQuickItem::windowChanged, this, &VisibilityWatcher::watchWindow);
        // A hidden item paints no frame, so the watcher also listens to `visibleChanged`.
        connect(item, &QQuickItem::visibleChanged, this, &VisibilityWatcher::lookSoon);
        connect(item, &QObject::destroyed, this, &VisibilityWatcher::lookSoon);
    }
    lookSoon();
}

void VisibilityWatcher::watchWindow(QQuickWindow* window) {
    if (window_) window_->disconnect(this);
    window_ = window;
    if (window) {
        connect(window, &QQuickWindow::afterAnimating, this, &VisibilityWatcher::lookSoon);
        connect(window, &QWindow::visibilityChanged, this, &VisibilityWatcher::lookSoon);
    }
    lookSoon();
}

void VisibilityWatcher::lookSoon() {
    auto* const shownIn = window_ ? windowOnScreen(window_) : nullptr;
    if (shownIn != shownIn_) {
        if (shownIn_) shownIn_->removeEventFilter(this);
        if (shownIn) shownIn->installEventFilter(this);
        shownIn_ = shownIn;
    }
    if (!timer_.isActive()) timer_.start();
}

bool VisibilityWatcher::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Expose:
        case QEvent::Show:
        case QEvent::Hide:
        case QEvent::WindowStateChange: lookSoon(); break;
        default: break;
    }
    return QObject::eventFilter(watched, event);
}

double VisibilityWatcher::visibleFraction() const {
    if (!item_ || !item_->isVisible() || !item_->window()) return 0;
    auto* const window = item_->window();
    const auto* const shownIn = windowOnScreen(window);
    // A widget that is hidden hides the window that it paints too.
    if (window->visibility() == QWindow::Hidden || !shownIn->isExposed()) return 0;
    if (shownIn->visibility() == QWindow::Minimized) return 0;

    QRect whole = rectInScene(*item_, item_->boundingRect());
    // An item without a size counts as visible if its position is.
    if (whole.isEmpty()) whole.setSize(QSize(1, 1));
    QRegion seen = QRegion(whole) & QRect(QPoint(), window->size());
    for (const auto* child = item_.data(); child && !seen.isEmpty(); child = child->parentItem()) {
        if (child->opacity() <= 0) return 0;
        if (child->clip()) seen &= rectInScene(*child, child->clipRect());
        if (const auto* parent = child->parentItem()) {
            for (const auto* sibling : siblingsAbove(*parent, *child))
                seen -= coveredBy(*sibling, seen);
        }
    }
    return std::min(1.0, area(seen) / area(whole));
}

}  // namespace VexmoraSDK
